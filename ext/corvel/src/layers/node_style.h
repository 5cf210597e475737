#pragma once

#include <string>

namespace Corvel {

/// How an area is filled.
struct Fill {
    std::string text; ///< a colour, or gradient stops "offset:colour,offset:colour"; empty: none
    bool gradient = false; ///< whether `text` holds gradient stops, running top to bottom

    friend bool operator==(const Fill&, const Fill&) = default;
};

/// All that a layer's attributes say of a node. Sizes are pixels, angles degrees, and 0 means
/// unset unless told otherwise.
struct NodeStyle {
    Fill fill;
    Fill border_fill;
    double border_thickness = 0;
    double radius_top_left = 0;
    double radius_top_right = 0;
    double radius_bottom_left = 0;
    double radius_bottom_right = 0;
    double margin_left = 0;
    double margin_top = 0;
    double margin_right = 0;
    double margin_bottom = 0;
    double padding_left = 0;
    double padding_top = 0;
    double padding_right = 0;
    double padding_bottom = 0;
    std::string text_color;
    std::string secondary_text_color; ///< no attribute: set for Markdown nodes by the render
    double font_size = 0;
    double font_weight = 0;
    std::string font_family;
    bool visible = true;
    bool collapsed = false;
    std::string layout_direction; ///< "Row", "Column", each also with "-Reverse"; empty: column
    double layout_spacing = 0;
    std::string layout_align;
    std::string layout_justify;
    std::string layout_scroll; ///< "Vertical", "Horizontal", "Both" or empty
    double layout_grow = 0;
    double layout_shrink = -1; ///< -1: unset
    double width = 0;
    double height = 0;
    double height_viewport = 0; ///< fraction of the window's height
    double max_width = 0;
    double aspect_ratio = 0; ///< width divided by height
    double offset_y = 0;     ///< of an overlay bar: 0 fully shown, 1 fully hidden
    double offset_x = 0;     ///< of an overlay side: 0 fully shown, 1 fully hidden
    double rotation = 0;
    double opacity = 1;
    std::string text_attr;
    std::string placeholder;
    bool secret = false;
    bool multiline = false;
    bool read_only = false;
    bool wrap = true;
    std::string source;           ///< the style's media source or icon name
    std::string effective_source; ///< `source` after the application's override
    std::string fit;              ///< "Contain", "Aspect" or empty (cover)
    bool autoplay = false;
    bool loop = false;
    bool muted = false;
    bool controls = false;
    std::string data;
    std::string intent;
    std::string overlay;
    std::string href;
    std::string tag;
    std::string anchor;
    std::string bind;

    friend bool operator==(const NodeStyle&, const NodeStyle&) = default;
};

} // namespace Corvel
