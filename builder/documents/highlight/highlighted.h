#pragma once

#include "builder/documents/escape.h"

#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// What a stretch of code is; the letter of its class "hl-k".
enum class CodePart : char {
    Keyword = 'k',
    String = 's',
    Comment = 'c',
    Number = 'n',
    Type = 't', ///< or an element's name
    Function = 'f',
    Variable = 'v', ///< or an attribute, a key, an option
    Inserted = 'i',
    Deleted = 'd',
    Meta = 'm' ///< a directive, an annotation, a prompt
};

/// Code as HTML, as it grows.
class Highlighted {
public:
    void reserve(std::size_t size) { html_.reserve(size); }
    void plain(std::string_view code) { append_text(html_, code); }

    void part(CodePart part, std::string_view code) {
        if (code.empty())
            return;
        html_ += "<span class=\"hl-";
        html_ += static_cast<char>(part);
        html_ += "\">";
        append_text(html_, code);
        html_ += "</span>";
    }

    std::string take() { return std::move(html_); }

private:
    std::string html_;
};

} // namespace Lumenfold::Builder
