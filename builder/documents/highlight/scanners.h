#pragma once

#include "builder/documents/highlight/highlighted.h"
#include "builder/documents/highlight/language.h"

#include <string_view>

namespace Lumenfold::Builder {

// Each writes all of `code`, in one pass, in parts.

/// Code of a language that a table describes.
void highlight_table(std::string_view code, const Language& language, Highlighted& out);
/// HTML and XML.
void highlight_markup(std::string_view code, Highlighted& out);
/// CSS and its kin.
void highlight_style_sheet(std::string_view code, Highlighted& out);
/// What diff prints.
void highlight_difference(std::string_view code, Highlighted& out);
/// A terminal's session: prompts, commands and what they print.
void highlight_session(std::string_view code, const Language& shell, Highlighted& out);
void highlight_markdown(std::string_view code, Highlighted& out);

} // namespace Lumenfold::Builder
