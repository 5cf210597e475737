#include "builder/documents/clean_text.h"

#include <algorithm>
#include <utf8proc.h>

namespace Lumenfold::Builder {
namespace {

constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";
constexpr std::string_view REPLACEMENT = "\xEF\xBF\xBD";

bool is_plain(unsigned char byte) {
    return (byte >= ' ' && byte < 0x7F) || byte == '\n' || byte == '\t' || byte == '\r';
}

/// The length of the character at `at` if it may stand in a page, else 0.
std::size_t good_length(std::string_view bytes, std::size_t at) {
    if (is_plain(static_cast<unsigned char>(bytes[at])))
        return 1;
    utf8proc_int32_t point = 0;
    const utf8proc_ssize_t length =
        utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(bytes.data()) + at,
                         static_cast<utf8proc_ssize_t>(bytes.size() - at), &point);
    return length > 1 && point > 0x9F ? static_cast<std::size_t>(length) : 0;
}

std::size_t clean_length(std::string_view bytes, std::size_t at) {
    while (at < bytes.size()) {
        const std::size_t length = good_length(bytes, at);
        if (length == 0)
            break;
        at += length;
    }
    return at;
}

} // namespace

CleanText::CleanText(std::string_view bytes) {
    if (bytes.starts_with(BYTE_ORDER_MARK))
        bytes.remove_prefix(BYTE_ORDER_MARK.size());
    const std::size_t clean = clean_length(bytes, 0);
    if (clean < bytes.size())
        copy_cleaned(bytes, clean);
    else
        text_ = bytes;
}

void CleanText::copy_cleaned(std::string_view bytes, std::size_t clean) {
    std::size_t begin = 0;
    copy_.reserve(bytes.size());
    while (true) {
        copy_.append(bytes, begin, clean - begin);
        if (clean == bytes.size())
            break;
        const auto byte = static_cast<unsigned char>(bytes[clean]);
        const bool control = byte < 0x80;
        // A control character of two bytes, U+0080 to U+009F.
        const bool wide_control = byte == 0xC2 && clean + 1 < bytes.size() &&
                                  (static_cast<unsigned char>(bytes[clean + 1]) & 0xE0) == 0x80;
        if (byte == 0 || !(control || wide_control))
            copy_ += REPLACEMENT;
        if (!control && !wide_control && invalid_line_ == 0)
            invalid_line_ = 1 + static_cast<std::size_t>(
                                    std::count(bytes.begin(), bytes.begin() + clean, '\n'));
        begin = clean + (wide_control ? 2 : 1);
        clean = clean_length(bytes, begin);
    }
    text_ = copy_;
}

void tell_invalid(const CleanText& text, const DocumentSource& source, Messages& messages) {
    if (text.invalid_line() > 0)
        messages.push_back({Severity::Complaint, source.file, text.invalid_line(),
                            "the text is not UTF-8 here and shows replacement signs; save the "
                            "file as UTF-8"});
}

} // namespace Lumenfold::Builder
