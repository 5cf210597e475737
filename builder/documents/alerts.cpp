#include "builder/documents/alerts.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace Lumenfold::Builder {
namespace {

constexpr std::array<AlertKind, 5> KINDS = {{
    {"[!NOTE]", "note", "Note"},
    {"[!TIP]", "tip", "Tip"},
    {"[!IMPORTANT]", "important", "Important"},
    {"[!WARNING]", "warning", "Warning"},
    {"[!CAUTION]", "caution", "Caution"},
}};

bool same_letters(std::string_view text, std::string_view upper) {
    return text.size() == upper.size() &&
           std::equal(text.begin(), text.end(), upper.begin(), [](char c, char wanted) {
               return (c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c) == wanted;
           });
}

} // namespace

const AlertKind* alert_kind(std::string_view quote) {
    const std::string_view line = quote.substr(0, quote.find_first_of("\r\n"));
    const std::size_t end = line.find_last_not_of(" \t");
    const std::string_view mark = line.substr(0, end == std::string_view::npos ? 0 : end + 1);
    const auto* const kind = std::find_if(KINDS.begin(), KINDS.end(), [&](const AlertKind& each) {
        return same_letters(mark, each.mark);
    });
    return kind == KINDS.end() ? nullptr : kind;
}

} // namespace Lumenfold::Builder
