#include "layers/shared_name.h"

#include <cstddef>
#include <cstring>
#include <memory>
#include <vector>

namespace Layers {
namespace {

constexpr std::uint64_t MULTIPLIER = 0x9E3779B97F4A7C15;

std::uint64_t load(const char* bytes, std::size_t count) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, count);
    return word;
}

} // namespace

std::uint32_t hash_name(std::string_view name) {
    std::uint64_t hash = name.size() * MULTIPLIER;
    const auto mix = [&hash](std::uint64_t word) {
        hash = (hash ^ word) * MULTIPLIER;
        hash ^= hash >> 29;
    };
    std::size_t i = 0;
    for (; i + 8 <= name.size(); i += 8)
        mix(load(name.data() + i, 8));
    if (i < name.size())
        mix(load(name.data() + i, name.size() - i));
    hash *= MULTIPLIER;
    return static_cast<std::uint32_t>(hash >> 32);
}

/// All texts in use, hashed into chains.
class SharedName::Table {
public:
    static Table& instance() {
        static Table& table = *new Table; // outlives every name, static ones included
        return table;
    }

    Entry* enter(std::string_view text, std::uint32_t hash) {
        for (Entry* entry = bucket(hash); entry != nullptr; entry = entry->next)
            if (entry->hash == hash && entry->text == text) {
                ++entry->users;
                return entry;
            }
        if (count_ == buckets_.size())
            grow();
        ++count_;
        return bucket(hash) = new Entry{std::string(text), hash, 1, 0, bucket(hash)};
    }

    void remove(Entry* entry) {
        Entry** link = &bucket(entry->hash);
        while (*link != entry)
            link = &(*link)->next;
        *link = entry->next;
        --count_;
        delete entry;
    }

private:
    Entry*& bucket(std::uint32_t hash) { return buckets_[hash & (buckets_.size() - 1)]; }

    void grow() {
        std::vector<Entry*> old(buckets_.size() * 2, nullptr);
        old.swap(buckets_);
        for (Entry* entry : old)
            while (entry != nullptr) {
                Entry* const next = entry->next;
                entry->next = bucket(entry->hash);
                bucket(entry->hash) = entry;
                entry = next;
            }
    }

    std::vector<Entry*> buckets_ = std::vector<Entry*>(1024, nullptr); ///< a power of two
    std::size_t count_ = 0;
};

SharedName::SharedName(std::string_view text)
    : SharedName(text, hash_name(text)) {}

SharedName::SharedName(std::string_view text, std::uint32_t hash)
    : entry_(text.empty() ? nullptr : Table::instance().enter(text, hash)) {}

void SharedName::forget() {
    Table::instance().remove(entry_);
}

const std::string& SharedName::text() const {
    static const std::string empty;
    return entry_ != nullptr ? entry_->text : empty;
}

std::uint32_t SharedName::hash() const {
    return entry_ != nullptr ? entry_->hash : hash_name({});
}

} // namespace Layers
