#include "builder/files/content_hash.h"

#include <charconv>
#include <xxhash.h>

namespace Lumenfold::Builder {

namespace {

ContentHash from_library(const XXH128_hash_t& hash) {
    return {hash.high64, hash.low64};
}

void append_hex(std::string& text, std::uint64_t value) {
    for (int shift = 60; shift >= 0; shift -= 4)
        text += "0123456789abcdef"[(value >> shift) & 15];
}

bool read_hex(std::string_view digits, std::uint64_t& value) {
    for (const char c : digits)
        if (c >= 'A' && c <= 'F')
            return false;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value, 16);
    return error == std::errc() && stop == end;
}

} // namespace

struct ContentHasher::State {
    XXH3_state_t* hash = XXH3_createState();
    State() { XXH3_128bits_reset(hash); }
    ~State() { XXH3_freeState(hash); }
    State(const State&) = delete;
    State& operator=(const State&) = delete;
};

ContentHasher::ContentHasher()
    : state_(std::make_unique<State>()) {}

ContentHasher::~ContentHasher() = default;

void ContentHasher::add(std::string_view bytes) {
    XXH3_128bits_update(state_->hash, bytes.data(), bytes.size());
}

ContentHash ContentHasher::result() const {
    return from_library(XXH3_128bits_digest(state_->hash));
}

ContentHash hash_of(std::string_view bytes) {
    return from_library(XXH3_128bits(bytes.data(), bytes.size()));
}

std::string hex_of(const ContentHash& hash) {
    std::string text;
    text.reserve(32);
    append_hex(text, hash.high);
    append_hex(text, hash.low);
    return text;
}

std::optional<ContentHash> hash_from_hex(std::string_view text) {
    ContentHash hash;
    if (text.size() != 32 || !read_hex(text.substr(0, 16), hash.high) ||
        !read_hex(text.substr(16), hash.low))
        return std::nullopt;
    return hash;
}

} // namespace Lumenfold::Builder
