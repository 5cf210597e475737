#pragma once

#include <string>

namespace Bench {

/// Style text of form rows `first` to `last`, as people write them: a box with a label, an editor,
/// a button and an icon, with bases, groups, expansions, states and links to the theme. Every node
/// shows a colour of the theme. The caller's line above has fewer blanks than `indent`.
inline std::string form_rows(int first, int last, const std::string& indent) {
    static const std::string row = R"(// What the row shows.
Row N# << Corvel/Box:
    Fill: Theme/Secondary @Hover: Theme/Primary
    Layout.Direction: "Row" @Narrow: "Column"
    Layout.Spacing: 8
    Padding.(Left, Right, Top, Bottom): 6
    Label << Corvel/Text:
        Text: "A label"
        Text Color: Theme/Foreground
        Font.
            Size: 14
            Weight: 600
    Editor << Corvel/Editor:
        Fill: Theme/Tertiary
        Text Color: Theme/Foreground
        Placeholder: "A value"
        Layout.Grow: 1
        @Locked:
            Read Only: 1
    Button << Corvel/Button:
        Fill: Theme/Primary @Hover: Theme/Secondary @Hover & Pressed: Theme/Tertiary
        Text: "Remove"
        Intent: "list:remove"
        Size.Height: 32
    Icon << Corvel/Icon:
        Source: "trash"
        Text Color: Theme/Foreground
        Size.(Width, Height): 18
)";
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
