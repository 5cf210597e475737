#pragma once

#include "app/context/context.h"

#include <string>

namespace Lumenfold {

/// Hides a dialog until it is shown, and makes its exit and cancel buttons hide it.
void wire_dialog_frame(const Context& context, const std::string& dialog);

/// The text of an editor without blanks and tabs at its ends.
std::string trimmed_value(const AppContext& context, const std::string& editor_path);

} // namespace Lumenfold
