#pragma once

#include "app/context/context.h"

#include <string>

namespace Lumenfold {

/// Wires the dialog that edits a section's content fragment.
void wire_edit_section_dialog(const Context& context);

/// Opens the content fragment `body` (a reference such as "/content-fragments/x_home.html") in the
/// dialog. Nothing for an empty reference.
void open_section_editor(const Context& context, const std::string& body, const std::string& label);

} // namespace Lumenfold
