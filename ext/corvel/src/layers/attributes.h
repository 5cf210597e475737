#pragma once

#include "layers/node_style.h"

#include <string>
#include <string_view>
#include <vector>

namespace Layers {

class LLayer;

/// How an attribute's value reaches its field of `NodeStyle`.
enum class AttributeKind {
    Number, ///< a number; a missing or unreadable one gives the field 0
    String, ///< a text; a missing or unreadable one leaves the default
    Flag,   ///< a number, true unless 0; a missing or unreadable one leaves the default
};

/// One entry of the vocabulary: a name that means something to the framework.
struct AttributeInfo {
    std::string_view name; ///< as written in a file, group included: "Size.Width"
    AttributeKind kind;
    std::string_view meaning; ///< one line for the author of a style
    std::string_view values;  ///< of a text that is one of a few: "Row, Column"; empty: any
};

/// The whole vocabulary in reading order, the fill attributes and the "Thickness" of a "Border"
/// layer included.
const std::vector<AttributeInfo>& attribute_vocabulary();

/// Scales `style` in place for the state "Mobile", if it is among `active_states`; attributes that
/// have a "Mobile" value of their own are left alone. `is_icon` chooses the icon factor for width
/// and height. A factor of exactly 1 changes nothing.
void apply_mobile_scale(Corvel::NodeStyle& style, const LLayer* layer,
                        const std::vector<std::string>& active_states, bool is_icon,
                        double mobile_icon_scale, double mobile_font_scale,
                        double mobile_size_scale);

/// `value` by "%f" without trailing zeros and without a trailing point: 0.25, 1.
std::string format_number(double value);

} // namespace Layers
