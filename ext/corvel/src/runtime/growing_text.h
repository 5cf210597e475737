#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace Corvel {

/// A text whose copies share one buffer, also when it grows: each handle knows how much of the
/// buffer is its text, and adding to the end of the longest costs what is added. Comparison looks
/// at identity first. For what a program prints, which is kept by the state, the render tree and
/// the view at once. The count is not atomic: a text and its copies belong to one thread.
class GrowingText {
public:
    GrowingText() = default;
    GrowingText(std::string text)
        : size_(text.size())
        , box_(text.empty() ? nullptr : new Box{std::move(text), 1}) {}
    GrowingText(const char* text)
        : GrowingText(std::string(text)) {}
    GrowingText(const GrowingText& other)
        : size_(other.size_)
        , box_(other.box_) {
        if (box_)
            ++box_->count;
    }
    GrowingText(GrowingText&& other) noexcept
        : size_(std::exchange(other.size_, 0))
        , box_(std::exchange(other.box_, nullptr)) {}
    GrowingText& operator=(GrowingText other) noexcept {
        std::swap(size_, other.size_);
        std::swap(box_, other.box_);
        return *this;
    }
    ~GrowingText() {
        if (box_ && --box_->count == 0)
            delete box_;
    }

    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    /// Valid until any handle of the buffer grows.
    std::string_view view() const {
        return box_ ? std::string_view(box_->text).substr(0, size_) : std::string_view();
    }
    /// Valid until any handle of the buffer grows. Costs a copy for a handle that another has
    /// outgrown, which `view` never does.
    const std::string& get() const {
        static const std::string nothing;
        if (!box_)
            return nothing;
        if (box_->text.size() != size_)
            detach();
        return box_->text;
    }
    operator const std::string&() const { return get(); }
    const std::string& operator*() const { return get(); }
    const std::string* operator->() const { return &get(); }

    /// Other handles keep the text they had.
    void append(std::string_view addition) {
        if (addition.empty())
            return;
        if (!box_)
            box_ = new Box{std::string(), 1};
        else if (box_->text.size() != size_)
            detach();
        box_->text += addition;
        size_ = box_->text.size();
    }

    /// Whether both are the same length of one buffer; true says that they are equal, false says
    /// nothing.
    bool same(const GrowingText& other) const { return box_ == other.box_ && size_ == other.size_; }
    /// Whether this text begins with `earlier`; at once if it has grown out of it.
    bool continues(const GrowingText& earlier) const {
        return size_ >= earlier.size_ &&
               (box_ == earlier.box_ || view().starts_with(earlier.view()));
    }

    friend bool operator==(const GrowingText& a, const GrowingText& b) {
        return a.size_ == b.size_ && (a.box_ == b.box_ || a.view() == b.view());
    }
    friend bool operator==(const GrowingText& a, const std::string& b) { return a.view() == b; }
    friend bool operator==(const GrowingText& a, const char* b) { return a.view() == b; }

private:
    struct Box {
        std::string text;
        std::uint32_t count;
    };
    void detach() const {
        Box* own = new Box{box_->text.substr(0, size_), 1};
        if (--box_->count == 0)
            delete box_;
        box_ = own;
    }

    std::size_t size_ = 0;
    mutable Box* box_ = nullptr;
};

} // namespace Corvel
