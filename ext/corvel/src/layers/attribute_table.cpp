#include "layers/attribute_table.h"

#include "layers/name_index.h"
#include "layers/shared_name.h"

namespace Layers {
namespace {

using Corvel::NodeStyle;
using enum AttributeKind;

std::vector<AttributeEntry> make_table() {
    // clang-format off
    return {
        {{"Fill",                     String, "colour of the area", ""}, {}},
        {{"Fill.Start Color",         String, "colour at the start of a vertical gradient", ""}, {}},
        {{"Fill.End Color",           String, "colour at the end of the gradient", ""}, {}},
        {{"Fill.Start",               Number, "where the gradient starts, 0 top to 1 bottom", ""}, {}},
        {{"Fill.End",                 Number, "where the gradient ends, 0 top to 1 bottom", ""}, {}},
        {{"Thickness",                Number, "width of the border, in a layer \"Border\"", ""}, &NodeStyle::border_thickness},
        {{"Corner Radii.Top Left",    Number, "rounding of the corner", ""}, &NodeStyle::radius_top_left},
        {{"Corner Radii.Top Right",   Number, "rounding of the corner", ""}, &NodeStyle::radius_top_right},
        {{"Corner Radii.Bottom Left", Number, "rounding of the corner", ""}, &NodeStyle::radius_bottom_left},
        {{"Corner Radii.Bottom Right", Number, "rounding of the corner", ""}, &NodeStyle::radius_bottom_right},
        {{"Margins.Left",             Number, "room kept free outside", ""}, &NodeStyle::margin_left},
        {{"Margins.Top",              Number, "room kept free outside", ""}, &NodeStyle::margin_top},
        {{"Margins.Right",            Number, "room kept free outside", ""}, &NodeStyle::margin_right},
        {{"Margins.Bottom",           Number, "room kept free outside", ""}, &NodeStyle::margin_bottom},
        {{"Padding.Left",             Number, "room kept free inside", ""}, &NodeStyle::padding_left},
        {{"Padding.Top",              Number, "room kept free inside", ""}, &NodeStyle::padding_top},
        {{"Padding.Right",            Number, "room kept free inside", ""}, &NodeStyle::padding_right},
        {{"Padding.Bottom",           Number, "room kept free inside", ""}, &NodeStyle::padding_bottom},
        {{"Text Color",               String, "colour of text and of icons", ""}, &NodeStyle::text_color},
        {{"Font.Size",                Number, "height of the type in pixels", ""}, &NodeStyle::font_size},
        {{"Font.Weight",              Number, "400 normal, 700 bold", ""}, &NodeStyle::font_weight},
        {{"Font.Family",              String, "name of the typeface", ""}, &NodeStyle::font_family},
        {{"Visible",                  Flag,   "0 leaves the node out", ""}, &NodeStyle::visible},
        {{"Collapsed",                Flag,   "1 folds the node to nothing, with an animation", ""}, &NodeStyle::collapsed},
        {{"Layout.Direction",         String, "how the children stand, a column by default", "Row, Row-Reverse, Column, Column-Reverse"}, &NodeStyle::layout_direction},
        {{"Layout.Spacing",           Number, "room between children", ""}, &NodeStyle::layout_spacing},
        {{"Layout.Align",             String, "place of the children across the direction, in the middle by default", "Start, Center, End, Stretch"}, &NodeStyle::layout_align},
        {{"Layout.Justify",           String, "place of the children along the direction, in the middle by default", "Start, Center, End"}, &NodeStyle::layout_justify},
        {{"Layout.Scroll",            String, "which way the content scrolls", "Vertical, Horizontal, Both"}, &NodeStyle::layout_scroll},
        {{"Layout.Grow",              Number, "share of the room left over", ""}, &NodeStyle::layout_grow},
        {{"Layout.Shrink",            Number, "0 keeps the size where room is short", ""}, &NodeStyle::layout_shrink},
        {{"Size.Width",               Number, "fixed width", ""}, &NodeStyle::width},
        {{"Size.Height",              Number, "fixed height", ""}, &NodeStyle::height},
        {{"Size.Height Viewport",     Number, "height as a fraction of the window's", ""}, &NodeStyle::height_viewport},
        {{"Size.Max Width",           Number, "greatest width", ""}, &NodeStyle::max_width},
        {{"Aspect Ratio",             Number, "width divided by height", ""}, &NodeStyle::aspect_ratio},
        {{"Transform.Offset Y",       Number, "of an overlay bar: 0 shown to 1 hidden", ""}, &NodeStyle::offset_y},
        {{"Transform.Offset X",       Number, "of an overlay side: 0 shown to 1 hidden", ""}, &NodeStyle::offset_x},
        {{"Transform.Rotation",       Number, "degrees, clockwise", ""}, &NodeStyle::rotation},
        {{"Opacity",                  Number, "0 clear to 1 solid", ""}, &NodeStyle::opacity},
        {{"Text",                     String, "the text to show", ""}, &NodeStyle::text_attr},
        {{"Placeholder",              String, "hint in an empty editor", ""}, &NodeStyle::placeholder},
        {{"Secret",                   Flag,   "1 hides what is typed", ""}, &NodeStyle::secret},
        {{"Multiline",                Flag,   "1 makes an editor of many lines", ""}, &NodeStyle::multiline},
        {{"Read Only",                Flag,   "1 keeps an editor from being changed", ""}, &NodeStyle::read_only},
        {{"Wrap",                     Flag,   "0 keeps long lines whole", ""}, &NodeStyle::wrap},
        {{"Source",                   String, "media file, or name of an icon", ""}, &NodeStyle::source},
        {{"Fit",                      String, "how a picture takes its place; whole, as wide or as high as given, or covering", "Contain, Aspect, Cover"}, &NodeStyle::fit},
        {{"Autoplay",                 Flag,   "1 starts a video by itself", ""}, &NodeStyle::autoplay},
        {{"Loop",                     Flag,   "1 plays a video again and again", ""}, &NodeStyle::loop},
        {{"Muted",                    Flag,   "1 plays a video without sound", ""}, &NodeStyle::muted},
        {{"Controls",                 Flag,   "1 shows a video's controls", ""}, &NodeStyle::controls},
        {{"Data",                     String, "what a QR code says", ""}, &NodeStyle::data},
        {{"Intent",                   String, "what a click means to the framework", ""}, &NodeStyle::intent},
        {{"Href",                     String, "address behind a link", ""}, &NodeStyle::href},
        {{"Tag",                      String, "role of the node's content", ""}, &NodeStyle::tag},
        {{"Anchor",                   String, "place that a floating node keeps to", ""}, &NodeStyle::anchor},
        {{"Overlay",                  String, "how the node floats above others", "Modal, PinnedBottom, BottomSheet, ModalSheet, SideSheet"}, &NodeStyle::overlay},
        {{"Bind",                     String, "what fills the node: \"Field:title\", \"List:rows\"", ""}, &NodeStyle::bind},
    };
    // clang-format on
}

NameIndex index_table(const std::vector<AttributeEntry>& table) {
    NameIndex index;
    for (const AttributeEntry& entry : table)
        index.add(hash_name(entry.info.name));
    return index;
}

} // namespace

const std::vector<AttributeEntry>& attribute_table() {
    static const std::vector<AttributeEntry> table = make_table();
    return table;
}

std::size_t find_entry(std::string_view name, std::uint32_t hash) {
    static const std::vector<AttributeEntry>& table = attribute_table();
    static const NameIndex index = index_table(table);
    const std::size_t entry =
        index.find(hash, [&](std::size_t position) { return table[position].info.name == name; });
    return entry == NameIndex::npos ? table.size() : entry;
}

const std::vector<AttributeInfo>& attribute_vocabulary() {
    static const std::vector<AttributeInfo> vocabulary = [] {
        std::vector<AttributeInfo> infos;
        for (const AttributeEntry& entry : attribute_table())
            infos.push_back(entry.info);
        return infos;
    }();
    return vocabulary;
}

} // namespace Layers
