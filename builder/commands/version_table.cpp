#include "builder/commands/version_table.h"

#include "builder/report/visible_text.h"
#include "site/versions.h"

#include <algorithm>
#include <array>

namespace Lumenfold::Builder {

namespace {

using Cells = std::array<std::string, 4>;

/// How many columns of a terminal a text takes, near enough for labels, tags and dates.
std::size_t width_of(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    }));
}

Cells cells_of(const VersionRow& row) {
    return {visible_text(row.name), visible_text(row.tag), visible_text(row.released),
            version_status_text(row.status)};
}

} // namespace

std::string version_table(const std::vector<VersionRow>& rows) {
    if (rows.empty())
        return {};
    std::vector<Cells> lines = {{"Version", "Tag", "Released", "Status"}};
    for (const VersionRow& row : rows)
        lines.push_back(cells_of(row));
    std::array<std::size_t, 4> widths = {};
    for (const Cells& cells : lines)
        for (std::size_t i = 0; i < cells.size(); ++i)
            widths[i] = std::max(widths[i], width_of(cells[i]));
    std::string table;
    for (const Cells& cells : lines) {
        for (std::size_t i = 0; i + 1 < cells.size(); ++i)
            table += cells[i] + std::string(widths[i] - width_of(cells[i]) + 2, ' ');
        table += cells.back() + '\n';
    }
    return table;
}

std::string version_records(const std::vector<VersionRow>& rows) {
    std::string lines;
    for (const VersionRow& row : rows)
        lines += "R\t" + visible_text(row.name) + '\t' + visible_text(row.tag) + '\t' +
                 visible_text(row.released) + '\t' + row.status + '\t' +
                 (row.included ? "1" : "0") + '\n';
    return lines;
}

} // namespace Lumenfold::Builder
