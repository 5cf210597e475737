#include "layers/engine.h"
#include "layers/object_model.h"
#include "layers/style_reader.h"
#include "loaded_app.h"
#include "runtime/layer_plan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <string>

// Reads colours and opacities off the styles, through every layer from the window to the rows of
// its lists, in every theme and every state, and compares what is written with what it lies on.

namespace TestSupport {
namespace {

using Corvel::NodeKind;
using Layers::LLayer;
using Color = std::array<double, 3>; ///< red, green and blue from 0 to 1

constexpr double TEXT_LEAST = 4.5;
/// What a surface needs to be told from the one below it, by its fill or its edge.
constexpr double SURFACE_LEAST = 1.12;
/// The hint above a text is written at half strength.
constexpr double HINT_STRENGTH = 0.5;
constexpr double HINT_LEAST = 3.1;
/// Texts that lie on the window itself stand near its top.
constexpr double GRADIENT_PART = 0.15;

Color mixed(const Color& over, const Color& under, double share) {
    Color result{};
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = over[i] * share + under[i] * (1 - share);
    return result;
}

/// Of "#rrggbb".
Color color_of(const std::string& text) {
    EXPECT_EQ(text.size(), 7U) << text;
    Color result{};
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = std::stoi(text.substr(1 + 2 * i, 2), nullptr, 16) / 255.0;
    return result;
}

double luminance(const Color& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color[0]) + 0.7152 * linear(color[1]) + 0.0722 * linear(color[2]);
}

double contrast(const Color& a, const Color& b) {
    const auto [dark, bright] = std::minmax({luminance(a), luminance(b)});
    return (bright + 0.05) / (dark + 0.05);
}

/// The colour of a fill; of a gradient "offset:colour,offset:colour" that near its top.
Color fill_color(const Corvel::Fill& fill) {
    if (!fill.gradient)
        return color_of(fill.text);
    const auto stop = [&](std::size_t colon) { return color_of(fill.text.substr(colon + 1, 7)); };
    return mixed(stop(fill.text.rfind(':')), stop(fill.text.find(':')), GRADIENT_PART);
}

struct Surface {
    Color color{};
    double opacity = 1;
};

class Walk {
public:
    Walk(const std::string& label, std::vector<std::string> active)
        : label_(label)
        , states_(std::move(active)) {}

    void visit(const LLayer& layer, const std::string& path, Surface below) {
        const Corvel::NodeStyle style = Layers::read_node_style(&layer, states_);
        if (!style.visible)
            return;
        const NodeKind kind = Corvel::node_kind_of(&layer);
        Surface here = below;
        here.opacity *= style.opacity;
        if (!style.fill.text.empty() && kind != NodeKind::QR && style.overlay != "SideSheet") {
            here.color = mixed(fill_color(style.fill), below.color, here.opacity);
            const double edge = style.border_thickness > 0 && !style.border_fill.text.empty()
                                    ? contrast(color_of(style.border_fill.text), below.color)
                                    : 1;
            surfaces[path] = {style.fill.text, std::max(edge, contrast(here.color, below.color))};
            if (kind == NodeKind::Button || kind == NodeKind::Editor || kind == NodeKind::ComboBox)
                expect(path + " as a surface", surfaces[path].second, SURFACE_LEAST);
        }
        const bool captioned = kind == NodeKind::Button && !style.text_color.empty();
        if (kind == NodeKind::Text || kind == NodeKind::Editor || kind == NodeKind::ComboBox ||
            captioned) {
            const Color ink = color_of(style.text_color);
            expect(path, contrast(mixed(ink, here.color, here.opacity), here.color), TEXT_LEAST);
            if (kind == NodeKind::Editor)
                expect(path + " as a hint",
                       contrast(mixed(ink, here.color, HINT_STRENGTH), here.color), HINT_LEAST);
        }
        for (const LLayer* child : Corvel::template_children(layer))
            visit(*child, path + "/" + child->name(), here);
    }

    /// By path, the fill and how well it is told from what lies below.
    std::map<std::string, std::pair<std::string, double>> surfaces;

private:
    void expect(const std::string& what, double found, double least) {
        EXPECT_TRUE(found >= least || !is_possible(what)) << label_ << ": " << what << " " << found;
    }
    /// Only the words of buttons are ever out of use, and no question's answer is.
    bool is_possible(const std::string& what) const {
        return states_.back() != "Disabled" || (what.ends_with(" Button/Label") &&
                                                what.find("Confirm Button") == std::string::npos);
    }

    std::string label_;
    std::vector<std::string> states_;
};

TEST(Contrast, EveryTextAndEveryStateCanBeToldFromWhatItLiesOn) {
    const auto app = load_app();
    const std::vector<std::string> states = {"Checked",  "Excluded", "Pending",  "Invalid",
                                             "Disabled", "Active",   "Selected", "Empty",
                                             "Custom",   "Narrow"};
    for (const auto& [name, theme] : app->themes()) {
        app->set_theme(name);
        const LLayer& root = app->engine().root();
        const LLayer* top = nullptr;
        for (const LLayer* child : Corvel::template_children(root))
            if (child->name() == "App")
                top = child;
        ASSERT_NE(top, nullptr);
        const Surface screen{color_of(theme_value(theme, "Primary")), 1};
        Walk plain(name, {"Desktop"});
        plain.visit(*top, "App", screen);
        EXPECT_GT(plain.surfaces.size(), 100U);
        for (const std::string& state : states) {
            Walk walk(name + " @" + state, {"Desktop", state});
            walk.visit(*top, "App", screen);
            // What gets another surface in a state is marked by it.
            for (const auto& [path, surface] : walk.surfaces) {
                const auto before = plain.surfaces.find(path);
                const bool told =
                    before != plain.surfaces.end() && before->second.first == surface.first;
                EXPECT_TRUE(told || state == "Disabled" || surface.second >= SURFACE_LEAST)
                    << name << " @" << state << " " << path << ": " << surface.second;
            }
        }
    }
}

} // namespace
} // namespace TestSupport
