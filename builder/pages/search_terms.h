#pragma once

#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// Takes the words out of a text one by one, in the form in which search compares them: decomposed,
/// without marks, in lower case, with one sigma, at most MAX_TERM_LENGTH characters. Letters,
/// digits and marks make words; an ideograph or kana is a word of its own. The script of the search
/// page does the same to what readers type (assets/site.js, `termsOf`).
class TermReader {
public:
    static constexpr int MAX_TERM_LENGTH = 32;

    explicit TermReader(std::string_view text)
        : text_(text) {}

    /// The next word, valid until the next call; empty at the end.
    std::string_view next();

private:
    bool take_character();

    std::string_view text_;
    std::size_t at_ = 0;
    std::string term_;
    int length_ = 0;
    bool closed_ = false; ///< the word is an ideograph: nothing follows in it
};

/// The characters of a text in reverse order.
std::string reversed(std::string_view text);

} // namespace Lumenfold::Builder
