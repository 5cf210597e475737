#pragma once

#include "builder/documents/markdown_sink.h"

#include <string_view>

namespace Lumenfold::Builder {

/// Whether the Markdown holds HTML of its author's.
bool holds_html(std::string_view markdown);

enum class AuthorHtml : bool { AsText, AsHtml };

/// Reads Markdown into a sink. Elements nested deeper than any person writes are left out, which is
/// told; their content stays. False if the text makes far more elements than it has characters: the
/// sink then has an incomplete document.
bool read_markdown(std::string_view markdown, AuthorHtml html, MarkdownSink& sink);

} // namespace Lumenfold::Builder
