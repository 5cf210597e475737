#include "app/builder/porcelain.h"

namespace Lumenfold {

std::string without_colours(std::string_view line) {
    std::string text;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line.substr(i, 2) != "\x1b[") {
            text += line[i];
            continue;
        }
        // Parameters lie between 0x20 and 0x3f; the byte behind them ends the sequence.
        for (i += 2; i < line.size() && line[i] >= 0x20 && line[i] <= 0x3f;)
            ++i;
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
