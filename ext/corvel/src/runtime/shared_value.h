#pragma once

#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>

namespace Corvel {

/// A value whose copies share one immutable record until `edit` is called. Comparison looks at
/// identity first and at the value only then, which makes an unchanged tree cheap to compare.
/// The count is not atomic: a value and its copies belong to one thread.
template <class T>
class SharedValue {
public:
    SharedValue() = default;
    SharedValue(T value)
        : box_(new Box{std::move(value), 1}) {}
    SharedValue(const char* text) requires std::is_same_v<T, std::string>
        : SharedValue(std::string(text)) {}
    SharedValue(const SharedValue& other)
        : box_(other.box_) {
        if (box_)
            ++box_->count;
    }
    SharedValue(SharedValue&& other) noexcept
        : box_(std::exchange(other.box_, nullptr)) {}
    SharedValue& operator=(SharedValue other) noexcept {
        std::swap(box_, other.box_);
        return *this;
    }
    ~SharedValue() {
        if (box_ && --box_->count == 0)
            delete box_;
    }

    /// A handle on what `make` returns, made in its place.
    template <class Make>
    static SharedValue made_by(Make make) {
        SharedValue handle;
        handle.box_ = new Box{make(), 1};
        return handle;
    }

    /// The value; a default-constructed T for a default-constructed handle.
    const T& get() const { return box_ ? box_->value : empty(); }
    operator const T&() const { return get(); }
    const T& operator*() const { return get(); }
    const T* operator->() const { return &get(); }

    /// The value for changing, detached from all copies.
    T& edit() {
        if (!box_)
            box_ = new Box{T(), 1};
        else if (box_->count > 1)
            *this = SharedValue(T(box_->value));
        return box_->value;
    }

    /// Whether both share one record; true says that they are equal, false says nothing.
    bool same(const SharedValue& other) const { return box_ == other.box_; }

    friend bool operator==(const SharedValue& a, const SharedValue& b) {
        return a.same(b) || a.get() == b.get();
    }
    friend bool operator==(const SharedValue& a, const T& b) { return a.get() == b; }
    friend bool operator==(const SharedValue& a,
                           const char* b) requires std::is_same_v<T, std::string> {
        return a.get() == b;
    }

private:
    struct Box {
        T value;
        std::uint32_t count;
    };
    static const T& empty() {
        static const T value{};
        return value;
    }
    Box* box_ = nullptr;
};

using SharedText = SharedValue<std::string>;

} // namespace Corvel
