#pragma once

#include "builder/report/message.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Lumenfold::Builder {

/// Writes notes: each value is its length in decimals, a colon and its bytes, so that any byte may
/// stand in it.
class NoteWriter {
public:
    void text(std::string_view value);
    void number(std::size_t value);
    void messages(const Messages& list);
    void texts(const std::vector<std::string>& list);

    template <typename T, typename Write>
    void list(const std::vector<T>& elements, const Write& write) {
        number(elements.size());
        for (const T& element : elements)
            write(element);
    }

    std::string take() { return std::move(bytes_); }

private:
    std::string bytes_;
};

/// Reads them again. After bytes that no writer made, `failed` is true and all values are empty.
class NoteReader {
public:
    explicit NoteReader(std::string_view bytes)
        : rest_(bytes) {}

    std::string text();
    std::size_t number();
    Messages messages();
    std::vector<std::string> texts();

    template <typename Read>
    auto list(const Read& read) {
        std::vector<decltype(read())> elements;
        const std::size_t count = list_size();
        elements.reserve(count);
        for (std::size_t i = 0; i < count && !failed_; ++i)
            elements.push_back(read());
        return elements;
    }

    bool failed() const { return failed_; }

private:
    /// A count of things that are each at least two bytes long, so never more than can follow.
    std::size_t list_size();
    void fail();

    std::string_view rest_;
    bool failed_ = false;
};

} // namespace Lumenfold::Builder
