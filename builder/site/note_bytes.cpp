#include "builder/site/note_bytes.h"

#include <charconv>
#include <system_error>

namespace Lumenfold::Builder {

void NoteWriter::text(std::string_view value) {
    number(value.size());
    bytes_ += value;
}

void NoteWriter::number(std::size_t value) {
    bytes_ += std::to_string(value);
    bytes_ += ':';
}

void NoteWriter::messages(const Messages& messages) {
    list(messages, [this](const Message& message) {
        number(static_cast<std::size_t>(message.severity));
        text(message.file);
        number(message.line);
        text(message.text);
    });
}

void NoteWriter::texts(const std::vector<std::string>& texts) {
    list(texts, [this](const std::string& element) { text(element); });
}

std::size_t NoteReader::number() {
    std::size_t value = 0;
    const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
    const auto length = static_cast<std::size_t>(end - rest_.data());
    if (error != std::errc() || length >= rest_.size() || rest_[length] != ':') {
        fail();
        return 0;
    }
    rest_.remove_prefix(length + 1);
    return value;
}

std::string NoteReader::text() {
    const std::size_t size = number();
    if (size > rest_.size()) {
        fail();
        return {};
    }
    std::string value(rest_.substr(0, size));
    rest_.remove_prefix(size);
    return value;
}

Messages NoteReader::messages() {
    return list([this] {
        Message message;
        message.severity = static_cast<Severity>(number() & 3U);
        message.file = text();
        message.line = number();
        message.text = text();
        return message;
    });
}

std::vector<std::string> NoteReader::texts() {
    return list([this] { return text(); });
}

std::size_t NoteReader::list_size() {
    const std::size_t value = number();
    if (value > rest_.size() / 2) {
        fail();
        return 0;
    }
    return value;
}

void NoteReader::fail() {
    failed_ = true;
    rest_ = {};
}

} // namespace Lumenfold::Builder
