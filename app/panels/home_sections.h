#pragma once

#include "app/shell.h"
#include "site/json_file.h"

#include <string>

namespace Lumenfold {

/// Publishes the sections of the site's home page.
void fill_home_sections(const Context& context, const Json& site);

/// Wires the actions of the section cards.
void wire_home_sections(const Context& context);

/// Wires the dialog that edits a section's content fragment, and the one that adds a section.
void wire_edit_section_dialog(const Context& context);
void wire_add_section_dialog(const Context& context);

/// Opens the content fragment `body` (a reference such as "/content-fragments/x_home.html") in its
/// dialog. Nothing for an empty reference.
void open_section_editor(const Context& context, const std::string& body, const std::string& label);

} // namespace Lumenfold
