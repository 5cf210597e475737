#include "layers/style_samples.h"

#include <array>
#include <random>
#include <string_view>

namespace LayersBench {
namespace {

constexpr std::string_view head = R"(// The palette, the measures and the prototypes.
Theme:
    Foreground: "#e3e3e3"
    Primary: "#36393f"
    Secondary: "#2f3136"
    Tertiary: "#25272b"
Tokens:
    Space.
        S: 8
        M: 12
        L: 16
    Radius.
        Card: 10
        Field: 6
    Type.
        Body: 14
        Page: 22
Corvel:
    Box
    Text:
        Text Color: Theme/Foreground
        Font.Size: Tokens/Type.Body
        Wrap: 1
    Icon:
        Source: ""
        Size.(Width, Height): 20
    Card:
        Fill: Theme/Secondary
        Corner Radii.(Top, Bottom) (Left, Right): Tokens/Radius.Card
        Padding.(Left, Top, Right, Bottom): Tokens/Space.M
        Border:
            Fill: Theme/Tertiary
            Thickness: 1
    Button:
        Caption: ""
        Fill: Theme/Tertiary @Hover: Theme/Primary @Hover & Pressed: Theme/Secondary
        Layout.Direction: "Row"
        Padding.(Left, Right): Tokens/Space.M
        Size.Height: 36
        Label << Text:
            Text: Caption
    Field:
        Fill: Theme/Tertiary
        Placeholder: ""
        Corner Radii.(Top, Bottom) (Left, Right): Tokens/Radius.Field
        Size.Height: 48
)";

constexpr std::array<std::string_view, 5> prototypes{"Text", "Icon", "Card", "Button", "Field"};

constexpr std::array<std::string_view, 16> statements{
    "Layout.Spacing: Tokens/Space.S\n",
    "Layout.Direction: \"Row\" @Narrow: \"Column\"\n",
    "Layout.Align: \"Stretch\"\n",
    "Layout.Grow: 1\n",
    "Fill: Theme/Primary @Hover: Theme/Secondary @Hover & Selected: Theme/Tertiary\n",
    "Text Color: Theme/Foreground\n",
    "Font.Size: Tokens/Type.Page @Narrow: 16\n",
    "Font.Weight: 600\n",
    "Size.Max Width: 760\n",
    "Margins.(Top, Bottom): Tokens/Space.L\n",
    "Opacity: 0.65 @Locked: 0.4\n",
    "Visible: 1 @Narrow: 0\n",
    "Bind: \"State:Pictured:icon\"\n",
    "Caption: \"Add Dependency\"\n",
    "Overlay: \"PinnedBottom\" // slides with the page\n",
    "Transform.Offset Y: 0 @Hidden: 1\n",
};

class Writer {
public:
    std::string text{head};

    void write_panel(int number) {
        text += "\n// What panel " + std::to_string(number) + " shows.\n";
        text += "App/Window/Panels/Panel n" + std::to_string(number) + " << Corvel/Card:\n";
        write_attributes(4, 5);
        for (int child = 0; child < 5; ++child) {
            text += "    Row Part n" + std::to_string(child) + " << Corvel/" +
                    std::string(prototypes[random_() % prototypes.size()]) + ":\n";
            write_attributes(8, 5 + random_() % 8);
            write_blocks();
        }
    }

private:
    void write_attributes(std::size_t indent, std::size_t count) {
        const std::size_t first = random_();
        for (std::size_t i = 0; i < count; ++i) {
            text.append(indent, ' ');
            text += statements[(first + i) % statements.size()];
        }
    }

    void write_blocks() {
        text += "        Padding.\n            Left: 4\n            Right: Tokens/Space.S\n";
        if (random_() % 2 == 0)
            text += "        @Narrow:\n            Size.Width: 120\n            Margins.\n"
                    "                Left: 2\n";
    }

    std::mt19937 random_{1};
};

} // namespace

std::string style_file(std::size_t size) {
    Writer writer;
    for (int panel = 0; writer.text.size() < size; ++panel)
        writer.write_panel(panel);
    return writer.text;
}

} // namespace LayersBench
