#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace Layers {

/// A hash of a name's bytes.
std::uint32_t hash_name(std::string_view name);

/// A text of which the process keeps one copy for all that are equal: the few hundred names and
/// paths of a style tree stand in it many thousand times. Belongs to one thread.
class SharedName {
public:
    SharedName() = default; ///< the empty text
    explicit SharedName(std::string_view text);
    /// For a caller that knows the text's hash already.
    SharedName(std::string_view text, std::uint32_t hash);
    SharedName(const SharedName& other)
        : entry_(other.entry_) {
        if (entry_ != nullptr)
            ++entry_->users;
    }
    SharedName(SharedName&& other) noexcept
        : entry_(std::exchange(other.entry_, nullptr)) {}
    SharedName& operator=(SharedName other) noexcept {
        std::swap(entry_, other.entry_);
        return *this;
    }
    ~SharedName() {
        if (entry_ != nullptr && --entry_->users == 0)
            forget();
    }

    const std::string& text() const;
    std::uint32_t hash() const;
    bool empty() const { return entry_ == nullptr; }

    /// A number for a pass that looks many names up. Whoever sets it sets it back to 0; the text
    /// must not be empty.
    std::uint32_t& mark() const { return entry_->mark; }

    friend bool operator==(const SharedName&, const SharedName&) = default;

private:
    struct Entry {
        std::string text;
        std::uint32_t hash;
        std::uint32_t users;
        std::uint32_t mark;
        Entry* next; ///< in the same bucket
    };
    class Table;
    void forget();

    Entry* entry_ = nullptr;
};

} // namespace Layers
