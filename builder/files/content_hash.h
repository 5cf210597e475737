#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// XXH3-128 of some bytes: tells contents apart, and keeps no secret.
struct ContentHash {
    std::uint64_t high = 0;
    std::uint64_t low = 0;
    bool operator==(const ContentHash&) const = default;
};

ContentHash hash_of(std::string_view bytes);

/// The hash of pieces that come one after the other.
class ContentHasher {
public:
    ContentHasher();
    ~ContentHasher();
    void add(std::string_view bytes);
    ContentHash result() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

/// 32 lower-case hexadecimal digits.
std::string hex_of(const ContentHash& hash);
/// Nothing unless `text` is 32 lower-case hexadecimal digits.
std::optional<ContentHash> hash_from_hex(std::string_view text);

} // namespace Lumenfold::Builder
