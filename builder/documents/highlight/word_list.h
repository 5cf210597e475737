#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Lumenfold::Builder {

/// A set of words, written as one text with single blanks, ordered by their first letters. Looking
/// a word up compares it with those of the same first letter only.
class WordList {
public:
    constexpr WordList() = default;

    template <std::size_t Size>
    constexpr WordList(const char (&words)[Size])
        : words_(words) {
        std::size_t bucket = 0;
        for (std::size_t at = 0; at < words_.size(); at = word_end(at) + 1) {
            const std::size_t next = bucket_of(words_[at]);
            if (next < bucket)
                throw "words must be ordered by their first letters";
            for (; bucket < next; ++bucket)
                begins_[bucket + 1] = static_cast<std::uint16_t>(at);
        }
        for (; bucket < OTHER + 1; ++bucket)
            begins_[bucket + 1] = static_cast<std::uint16_t>(words_.size());
    }

    constexpr bool contains(std::string_view word) const {
        if (word.empty())
            return false;
        const std::size_t bucket = bucket_of(word.front());
        for (std::size_t at = begins_[bucket]; at < begins_[bucket + 1]; at = word_end(at) + 1)
            if (words_.substr(at, word_end(at) - at) == word)
                return true;
        return false;
    }

private:
    static constexpr std::size_t OTHER = 26; ///< capitals and signs, behind the small letters

    static constexpr std::size_t bucket_of(char c) {
        return c >= 'a' && c <= 'z' ? static_cast<std::size_t>(c - 'a') : OTHER;
    }

    constexpr std::size_t word_end(std::size_t at) const {
        const std::size_t blank = words_.find(' ', at);
        return blank == std::string_view::npos ? words_.size() : blank;
    }

    std::string_view words_;
    std::array<std::uint16_t, OTHER + 2> begins_{};
};

} // namespace Lumenfold::Builder
