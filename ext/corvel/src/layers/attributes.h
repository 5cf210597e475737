#pragma once

#include "layers/node_style.h"

#include <memory>
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
};

/// The whole vocabulary in reading order, the fill attributes and the "Thickness" of a "Border"
/// layer included.
const std::vector<AttributeInfo>& attribute_vocabulary();

/// Reads every known attribute of `layer` under `active_states`. A null layer gives the defaults.
Corvel::NodeStyle read_node_style(const LLayer* layer,
                                  const std::vector<std::string>& active_states);

/// Reads the style of one layer again and again, for other states or after values have changed. It
/// finds the layer's known attributes once and after that reads these alone; a change of the
/// tree's links, names or children makes it look again by itself. Results are those of
/// `read_node_style`. The layer must outlive the reader.
class StyleReader {
public:
    /// A null layer gives the defaults.
    explicit StyleReader(const LLayer* layer);

    ~StyleReader();
    StyleReader(StyleReader&&) noexcept;
    StyleReader& operator=(StyleReader&&) noexcept;

    Corvel::NodeStyle read(const std::vector<std::string>& active_states) const;

private:
    struct Plan;
    std::unique_ptr<Plan> plan_;
};

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
