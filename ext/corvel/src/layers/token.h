#pragma once

#include <cstdint>
#include <string_view>

namespace Layers {

/// What a token is. The first fourteen kinds stand for text of the file, the others for structure.
enum class TokenKind : std::uint32_t {
    Name,       ///< a word of letters, digits, "-" and "_"
    Boolean,    ///< "true" or "false"
    Number,     ///< a decimal number without exponent
    String,     ///< a text in double quotes, escapes as written
    Color,      ///< "#" with 3, 4, 6 or 8 hexadecimal digits
    Colon,      ///< ":"
    At,         ///< "@"
    Ampersand,  ///< "&"
    Slash,      ///< "/"
    Dot,        ///< "."
    LeftParen,  ///< "("
    RightParen, ///< ")"
    Comma,      ///< ","
    Inherit,    ///< "<<"
    Indent,     ///< the indentation grew
    Dedent,     ///< the indentation shrank by one level
    LineEnd,    ///< the end of a line that held tokens
    EndOfFile,  ///< always the last token
    Error,      ///< a lexical error stood here
};

/// One token. Its text is a view into the text that the lexer was given and lives no longer.
struct Token {
    std::string_view text; ///< quotes and "#" included; white space for indents and dedents
    TokenKind kind = TokenKind::EndOfFile;
    std::uint64_t line =
        1; ///< 1-based line on which the token ended; a line end is on its own line

    friend bool operator==(const Token&, const Token&) = default;
};

} // namespace Layers
