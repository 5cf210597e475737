#include "builder/pages/search_terms.h"

#include <algorithm>
#include <array>
#include <utf8proc.h>

namespace Lumenfold::Builder {
namespace {

constexpr utf8proc_int32_t FINAL_SIGMA = 0x3c2;
constexpr utf8proc_int32_t SIGMA = 0x3c3;

bool is_mark(utf8proc_int32_t character) {
    const utf8proc_category_t category = utf8proc_category(character);
    return category == UTF8PROC_CATEGORY_MN || category == UTF8PROC_CATEGORY_MC ||
           category == UTF8PROC_CATEGORY_ME;
}

bool is_word_part(utf8proc_int32_t character) {
    const utf8proc_category_t category = utf8proc_category(character);
    return (category >= UTF8PROC_CATEGORY_LU && category <= UTF8PROC_CATEGORY_LO) ||
           (category >= UTF8PROC_CATEGORY_ND && category <= UTF8PROC_CATEGORY_NO);
}

bool is_ideograph(utf8proc_int32_t character) {
    return character >= 0x3040 && character <= 0x9fff;
}

void append_character(std::string& out, utf8proc_int32_t character) {
    std::array<utf8proc_uint8_t, 4> bytes{};
    const auto length = utf8proc_encode_char(character, bytes.data());
    for (utf8proc_ssize_t i = 0; i < length; ++i)
        out += static_cast<char>(bytes.at(static_cast<std::size_t>(i)));
}

bool is_ascii_word(unsigned char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z');
}

} // namespace

/// Takes the character at `at_`; false, and nothing taken, if the word ends before it.
bool TermReader::take_character() {
    const auto byte = static_cast<unsigned char>(text_[at_]);
    if (byte < 0x80) {
        if (!is_ascii_word(byte))
            return false;
        ++at_;
        if (length_++ < MAX_TERM_LENGTH)
            term_ += static_cast<char>(byte | (byte >= 'A' && byte <= 'Z' ? 0x20 : 0));
        return true;
    }
    utf8proc_int32_t character = -1;
    const auto size =
        utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text_.data()) + at_,
                         static_cast<utf8proc_ssize_t>(text_.size() - at_), &character);
    if (size < 1)
        return false;
    const bool mark = is_mark(character);
    if (!mark && !is_word_part(character))
        return false;
    if (is_ideograph(character)) {
        if (length_ > 0)
            return false;
        closed_ = true;
    }
    at_ += static_cast<std::size_t>(size);
    std::array<utf8proc_int32_t, 32> parts{};
    int last_class = 0;
    const auto count = utf8proc_decompose_char(character, parts.data(), parts.size(),
                                               UTF8PROC_DECOMPOSE, &last_class);
    for (utf8proc_ssize_t i = 0; i < std::min<utf8proc_ssize_t>(count, parts.size()); ++i) {
        utf8proc_int32_t part = utf8proc_tolower(parts.at(static_cast<std::size_t>(i)));
        if (is_mark(part))
            continue;
        if (part == FINAL_SIGMA)
            part = SIGMA;
        if (length_++ < MAX_TERM_LENGTH)
            append_character(term_, part);
    }
    return true;
}

std::string_view TermReader::next() {
    term_.clear();
    length_ = 0;
    closed_ = false;
    while (at_ < text_.size() && !closed_)
        if (!take_character()) {
            if (!term_.empty())
                break;
            ++at_;
        }
    return term_;
}

std::string reversed(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t end = text.size(); end > 0;) {
        std::size_t begin = end - 1;
        while (begin > 0 && (static_cast<unsigned char>(text[begin]) & 0xc0) == 0x80)
            --begin;
        result += text.substr(begin, end - begin);
        end = begin;
    }
    return result;
}

} // namespace Lumenfold::Builder
