#pragma once

#include "app/shell.h"

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

/// Makes a configuration the active one and fills the panels from disk, after the pending edits of
/// the one being left are written.
void load_config(const Context& context, OpenConfig config);

/// Closes a tab without a question. Form edits are written; other unsaved text is given up.
void close_config(const Context& context, const std::string& id);

/// The member that stands for a project: the umbrella, wherever the registry lists it, or the
/// first. Null without members. Valid while `members` stays as it is.
const Member* lead_member(const std::vector<Member>& members);

/// The logo that a project's tab shows: its lead's.
std::string members_logo(const std::vector<Member>& members);

} // namespace Lumenfold
