#pragma once

#include <optional>
#include <string>
#include <utility>

namespace Lumenfold {

/// What became of an operation: done, or the sentence for the user that says why not.
class [[nodiscard]] Result {
public:
    /// Done.
    Result() = default;

    /// Nothing was done, or what was begun is undone, because of `sentence`.
    static Result failed(std::string sentence) { return Result(std::move(sentence), false); }

    /// Nothing was done, and nothing needs to be said.
    static Result idle() { return Result("", false); }

    /// Nothing was done, because the record that was shown is not in its place any more.
    static Result changed() {
        return Result("The file has changed on disk; the list was read again.", true);
    }

    explicit operator bool() const { return !error_.has_value(); }

    /// Whether what was shown must be read again.
    bool is_changed() const { return is_changed_; }

    /// The sentence for the user; empty when done or idle.
    const std::string& error() const {
        static const std::string none;
        return error_ ? *error_ : none;
    }

    /// True when done. Else false, with the sentence in `error` where somebody asked for it.
    bool report_to(std::string* error) const {
        if (error && error_)
            *error = *error_;
        return !error_;
    }

private:
    Result(std::string sentence, bool is_changed)
        : error_(std::move(sentence))
        , is_changed_(is_changed) {}

    std::optional<std::string> error_;
    bool is_changed_ = false;
};

} // namespace Lumenfold
