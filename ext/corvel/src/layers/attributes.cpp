#include "layers/attributes.h"

#include "layers/object_model.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace Layers {
namespace {

using Corvel::NodeStyle;
using States = std::vector<std::string>;

constexpr const char* MOBILE_STATE = "Mobile";

double number_or_zero(const LAttribute& attribute, const States& states) {
    const double* const number = attribute.number_value(states);
    return number != nullptr ? *number : 0;
}

/// Scales fields whose attribute has no value of its own for the state "Mobile".
class MobileScaler {
public:
    MobileScaler(const LLayer* layer, const States& active)
        : layer_(layer)
        , active_(active) {
        std::copy_if(active.begin(), active.end(), std::back_inserter(reduced_),
                     [](const std::string& state) { return state != MOBILE_STATE; });
    }

    void scale(double& field, std::string_view name, double factor) const {
        if (factor == 1 || !(field > 0))
            return;
        const LAttribute* const attribute = layer_ ? layer_->find_attribute(name) : nullptr;
        const bool has_mobile_value =
            attribute != nullptr &&
            number_or_zero(*attribute, active_) != number_or_zero(*attribute, reduced_);
        if (!has_mobile_value)
            field *= factor;
    }

private:
    const LLayer* layer_;
    const States& active_;
    States reduced_; ///< the active states less "Mobile"
};

struct ScaledField {
    std::string_view name;
    double NodeStyle::*field;
};

constexpr std::array<ScaledField, 13> SPACING_FIELDS{{
    {"Layout.Spacing", &NodeStyle::layout_spacing},
    {"Margins.Left", &NodeStyle::margin_left},
    {"Margins.Top", &NodeStyle::margin_top},
    {"Margins.Right", &NodeStyle::margin_right},
    {"Margins.Bottom", &NodeStyle::margin_bottom},
    {"Padding.Left", &NodeStyle::padding_left},
    {"Padding.Top", &NodeStyle::padding_top},
    {"Padding.Right", &NodeStyle::padding_right},
    {"Padding.Bottom", &NodeStyle::padding_bottom},
    {"Corner Radii.Top Left", &NodeStyle::radius_top_left},
    {"Corner Radii.Top Right", &NodeStyle::radius_top_right},
    {"Corner Radii.Bottom Left", &NodeStyle::radius_bottom_left},
    {"Corner Radii.Bottom Right", &NodeStyle::radius_bottom_right},
}};

} // namespace

void apply_mobile_scale(NodeStyle& style, const LLayer* layer, const States& active_states,
                        bool is_icon, double mobile_icon_scale, double mobile_font_scale,
                        double mobile_size_scale) {
    if (std::find(active_states.begin(), active_states.end(), MOBILE_STATE) == active_states.end())
        return;
    const MobileScaler scaler(layer, active_states);
    scaler.scale(style.font_size, "Font.Size", mobile_font_scale);
    const double size_factor = is_icon ? mobile_icon_scale : mobile_size_scale;
    scaler.scale(style.width, "Size.Width", size_factor);
    scaler.scale(style.height, "Size.Height", size_factor);
    for (const ScaledField& scaled : SPACING_FIELDS)
        scaler.scale(style.*scaled.field, scaled.name, mobile_size_scale);
    const LLayer* const border = layer != nullptr ? layer->find_layer("Border") : nullptr;
    const MobileScaler border_scaler(border != nullptr ? border : layer, active_states);
    border_scaler.scale(style.border_thickness, "Thickness", mobile_size_scale);
}

std::string format_number(double value) {
    std::array<char, 512> buffer{}; // the longest number has 309 digits before the point
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                            std::chars_format::fixed, 6);
    std::string text(buffer.data(), end);
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.ends_with('.'))
            text.pop_back();
    }
    return text;
}

} // namespace Layers
