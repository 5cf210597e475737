#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Lumenfold::Builder {

// How search keeps what it knows of pages. A summary is
//
//     FORMAT, number of entries, for each: length and bytes of its record;
//     number of terms, for each: length and bytes, number of uses, length of them all, for each:
//         entry, strength, section, versions
//
// where numbers are LEB128. An entry is a page with all its versions; its record is what readers
// see of it, as a JavaScript array. `versions` has a bit for each version, the newest lowest; 0
// means all of them.

inline constexpr std::uint32_t SEARCH_FORMAT = 1;

/// How strongly a page speaks of a term, as one byte: the title (two bits), the headings (two), the
/// body (four).
struct Strength {
    unsigned title = 0;
    unsigned heading = 0;
    unsigned body = 0;

    unsigned packed() const { return title | heading << 2 | body << 4; }
    static Strength unpacked(unsigned byte) { return {byte & 3, byte >> 2 & 3, byte >> 4 & 15}; }
};

inline void put_number(std::string& out, std::uint32_t number) {
    for (; number >= 0x80; number >>= 7)
        out += static_cast<char>(number | 0x80);
    out += static_cast<char>(number);
}

inline void put_text(std::string& out, std::string_view text) {
    put_number(out, static_cast<std::uint32_t>(text.size()));
    out += text;
}

/// Reads numbers and texts; after the end of the bytes, zeros and empty texts, and `failed`.
class SearchBytes {
public:
    explicit SearchBytes(std::string_view bytes)
        : bytes_(bytes) {}

    std::uint32_t number() {
        std::uint32_t result = 0;
        for (unsigned shift = 0; shift < 35; shift += 7) {
            if (at_ >= bytes_.size())
                break;
            const auto byte = static_cast<unsigned char>(bytes_[at_++]);
            result |= static_cast<std::uint32_t>(byte & 0x7f) << shift % 32;
            if (byte < 0x80)
                return result;
        }
        failed_ = true;
        return 0;
    }

    std::string_view text() {
        const std::size_t size = number();
        if (failed_ || size > bytes_.size() - at_) {
            failed_ = true;
            return {};
        }
        at_ += size;
        return bytes_.substr(at_ - size, size);
    }

    bool failed() const { return failed_; }

private:
    std::string_view bytes_;
    std::size_t at_ = 0;
    bool failed_ = false;
};

} // namespace Lumenfold::Builder
