#pragma once

#include "builder/documents/highlight/word_list.h"

#include <cstdint>
#include <string_view>

namespace Lumenfold::Builder {

/// How texts are quoted in a language.
enum class Quotes : std::uint8_t {
    None,
    Double,        ///< "a"
    Both,          ///< "a" and 'a'
    Characters,    ///< "a", and 'a' for one character only (a lone ' means something else)
    BothBackticks, ///< "a", 'a', and `a` over many lines
    GoLike,        ///< "a", 'a' for one character, and `a` over many lines
    Triple,        ///< "a" and 'a', tripled over many lines
    Doubled        ///< 'a' and "a", with a quote doubled to stand in the text
};

/// What else a language has. Values are bits.
enum Traits : std::uint32_t {
    PLAIN = 0,
    CALLS = 1,                ///< a word before "(" names a function
    CAPITAL_TYPES = 2,        ///< a word with a capital at its beginning names a type
    DIRECTIVES = 4,           ///< "#word" at the beginning of a line
    ANY_CASE = 8,             ///< keywords in capitals or small letters
    DASHED_WORDS = 16,        ///< "-" may stand in a word
    COMMANDS = 32,            ///< the first word of a command; options begin with "-"
    COMMENT_NEEDS_BLANK = 64, ///< "a#b" holds no comment
    COLON_KEYS = 128,         ///< "key: value" at the beginning of a line
    EQUALS_KEYS = 256,        ///< "key = value" at the beginning of a line
    QUOTED_KEYS = 512,        ///< "\"key\": value" anywhere
    SECTIONS = 1024,          ///< "[section]" at the beginning of a line
    TARGETS = 2048,           ///< "target: sources" at the beginning of a line
    NESTED_COMMENTS = 4096,
    DOLLAR_VARIABLES = 8192, ///< "$a", "${a}", "$(a)"
    ANNOTATIONS = 16384,     ///< "@word"
    AT_VARIABLES = 32768,    ///< "@a"
};

/// What there is to know of a language for colouring its code.
struct Language {
    WordList keywords;
    WordList types;
    std::string_view line_comment;
    std::string_view other_line_comment;
    std::string_view comment_begin; ///< of a comment over many lines
    std::string_view comment_end;
    Quotes quotes = Quotes::None;
    std::uint32_t traits = PLAIN;

    bool has(Traits trait) const { return (traits & trait) != 0; }
};

/// The ways to look at a text: most languages fit the one scanner with a table.
enum class CodeKind : std::uint8_t {
    Unknown,
    Table,
    Markup,
    StyleSheet,
    Difference,
    Session,
    Markdown
};

struct KnownLanguage {
    CodeKind kind = CodeKind::Unknown;
    const Language* language = nullptr; ///< for `Table`, and the commands of a `Session`
};

/// The language of a fenced block by any of its usual names, in capitals or small letters.
KnownLanguage known_language(std::string_view name);

} // namespace Lumenfold::Builder
