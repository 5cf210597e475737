#pragma once

#include "app/context/context.h"
#include "app/context/open_config.h"

#include <string>
#include <vector>

namespace Lumenfold {

/// Opens the configuration file at `path` in a tab; the only way a path enters the application. A
/// file that is none, or of a later format, is reported in the message dialog.
void open_config(const Context& context, const std::string& path);

/// Opens a project known from a card, without looking at its file: nothing without members. An
/// empty `title` reads "Project".
void open_project_card(const Context& context, const std::string& path, const std::string& title,
                       std::vector<Member> members);

/// Brings the configuration's tab forward, or makes one, behind `leave_guard`.
void open_tab(const Context& context, OpenConfig config);

/// Makes an open configuration the active one and fills the panels from disk, after the pending
/// edits of the one being left are written.
void load_config(const Context& context, const std::string& id);

/// Closes a tab without a question. Form edits are written; other unsaved text is given up.
void close_config(const Context& context, const std::string& id);

} // namespace Lumenfold
