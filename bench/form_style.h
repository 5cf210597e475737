#pragma once

#include "support/temp_dir.h"

#include <string>

namespace Bench {

/// Style text of form rows `first` to `last`, as people write them: a box with a label, an editor,
/// a button and an icon, with bases, groups, expansions, states and links to the theme. Every node
/// shows a colour of the theme. The caller's line above has fewer blanks than `indent`.
inline std::string form_rows(int first, int last, const std::string& indent) {
    static const std::string row = TestSupport::read_file(SOURCE_ROOT "/bench/form_row.lyr");
    std::string text;
    for (int number = first; number <= last; ++number) {
        text += indent;
        for (const char c : row) {
            if (c == '#')
                text += std::to_string(number);
            else
                text += c;
            if (c == '\n')
                text += indent;
        }
        text += '\n';
    }
    return text;
}

constexpr int nodes_per_row = 5;

inline const std::string form_prototypes = "Box\nText\nEditor\nButton\nIcon\n";
inline const std::string form_theme =
    "Theme:\n    (Foreground, Primary, Secondary, Tertiary): \"\"\n";

} // namespace Bench
