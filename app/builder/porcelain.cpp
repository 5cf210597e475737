#include "app/builder/porcelain.h"

#include <algorithm>

namespace Lumenfold {

std::string without_colours(std::string_view line) {
    std::string text;
    text.reserve(line.size());
    for (std::size_t at = 0; at < line.size();) {
        const std::size_t escape = std::min(line.find("\x1b[", at), line.size());
        text += line.substr(at, escape - at);
        // Parameters lie between 0x20 and 0x3f; the byte behind them ends the sequence.
        for (at = escape + 2; at < line.size() && line[at] >= 0x20 && line[at] <= 0x3f;)
            ++at;
        ++at;
    }
    return text;
}

std::optional<PorcelainRecord> parse_porcelain(std::string_view line) {
    if (line.size() < 2 || line[1] != '\t')
        return std::nullopt;
    return PorcelainRecord{line[0], line.substr(2)};
}

std::optional<VersionRowUi> parse_version_record(std::string_view text) {
    std::vector<std::string> fields;
    for (std::size_t start = 0;;) {
        const std::size_t tab = text.find('\t', start);
        fields.emplace_back(text.substr(start, tab - start));
        if (tab == std::string_view::npos)
            break;
        start = tab + 1;
    }
    if (fields.size() != 5)
        return std::nullopt;
    return VersionRowUi{fields[0], fields[1], fields[2], fields[3], fields[4] == "1"};
}

void VersionListing::add_line(std::string_view line) {
    const std::optional<PorcelainRecord> record = parse_porcelain(line);
    if (!record)
        return;
    if (record->tag == 'R') {
        if (std::optional<VersionRowUi> row = parse_version_record(record->text))
            rows.push_back(std::move(*row));
    } else if (record->tag == 'E' && !record->text.empty()) {
        messages.emplace_back(record->text);
    }
}

} // namespace Lumenfold
