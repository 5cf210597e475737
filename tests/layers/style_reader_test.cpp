#include "layers/attributes.h"
#include "layers/layers_support.h"

#include <gtest/gtest.h>

#include <random>

namespace Layers {
namespace {

using Corvel::Fill;
using Corvel::NodeStyle;
using States = std::vector<std::string>;

// The reading rules applied one attribute after the other, by name.
class PlainReader {
public:
    PlainReader(const LLayer& layer, const States& states)
        : layer_(layer)
        , states_(states) {}

    void number(const char* name, double& field) const {
        if (const LAttribute* attribute = layer_.find_attribute(name))
            field = attribute->number_value(states_) ? *attribute->number_value(states_) : 0;
    }
    void string(const char* name, std::string& field) const {
        if (const LAttribute* attribute = layer_.find_attribute(name))
            if (const std::string* text = attribute->string_value(states_))
                field = *text;
    }
    void flag(const char* name, bool& field) const {
        if (const LAttribute* attribute = layer_.find_attribute(name))
            if (const double* number = attribute->number_value(states_))
                field = *number != 0;
    }
    void fill(Fill& field) const {
        const LAttribute* start_color = layer_.find_attribute("Fill.Start Color");
        const LAttribute* end_color = layer_.find_attribute("Fill.End Color");
        const bool complete = start_color && start_color->string_value(states_) && end_color &&
                              end_color->string_value(states_);
        if (!complete)
            return string("Fill", field.text);
        double start = 0;
        double end = 0;
        number("Fill.Start", start);
        number("Fill.End", end);
        field.text = format_number(start) + ":" + *start_color->string_value(states_) + "," +
                     format_number(end) + ":" + *end_color->string_value(states_);
        field.gradient = true;
    }

private:
    const LLayer& layer_;
    const States& states_;
};

NodeStyle read_plainly(const LLayer& layer, const States& states) {
    NodeStyle style;
    const PlainReader reader(layer, states);
    reader.fill(style.fill);
    if (const LLayer* border = layer.find_layer("Border")) {
        PlainReader(*border, states).fill(style.border_fill);
        PlainReader(*border, states).number("Thickness", style.border_thickness);
    }
    reader.number("Margins.Left", style.margin_left);
    reader.number("Layout.Shrink", style.layout_shrink);
    reader.number("Opacity", style.opacity);
    reader.string("Text", style.text_attr);
    reader.string("Text Color", style.text_color);
    reader.string("Source", style.source);
    reader.flag("Visible", style.visible);
    reader.flag("Read Only", style.read_only);
    style.effective_source = style.source;
    return style;
}

// A random tree: bases, links with states of their own, borders, values of the wrong kind.
class RandomStyles {
public:
    explicit RandomStyles(unsigned seed)
        : random_(seed) {}

    std::string file() {
        std::string text;
        for (int i = 0; i < 6; ++i) {
            text += "L" + std::to_string(i) + (i > 0 && chance(2) ? " << L" + digit(i) : "") +
                    ":\n  Unknown: 1\n";
            body(text, "  ");
            if (chance(2)) {
                text += "  Border:\n    Unknown: 2\n    Thickness: " + digit(9) + "\n";
                body(text, "    ");
            }
        }
        return text;
    }

    States states() {
        States active;
        for (const char* state : state_names)
            if (chance(2))
                active.emplace_back(state);
        std::shuffle(active.begin(), active.end(), random_);
        return active;
    }

    AttributeValue value() {
        switch (pick(3)) {
        case 0:
            return static_cast<double>(pick(5));
        case 1:
            return "#" + digit(9);
        default:
            return chance(2);
        }
    }

    bool chance(unsigned one_in) { return pick(one_in) == 0; }
    unsigned pick(unsigned count) { return static_cast<unsigned>(random_() % count); }
    std::string digit(unsigned count) { return std::to_string(pick(count)); }

    static constexpr const char* names[] = {
        "Fill",         "Fill.Start Color", "Fill.End Color", "Fill.Start", "Fill.End",
        "Margins.Left", "Layout.Shrink",    "Opacity",        "Text",       "Text Color",
        "Source",       "Visible",          "Read Only"};

private:
    static constexpr const char* state_names[] = {"A", "B", "C", "D"};

    void body(std::string& text, const std::string& indent) {
        for (const char* name : names) {
            if (chance(2))
                continue;
            text += indent + name + ": " + expression();
            for (unsigned n = pick(4); n > 0; --n)
                text += " @" + std::string(state_names[pick(4)]) +
                        (chance(3) ? std::string(" & ") + state_names[pick(4)] : "") + ": " +
                        expression();
            text += "\n";
        }
    }

    std::string expression() {
        switch (pick(4)) {
        case 0:
            return digit(3);
        case 1:
            return "\"c" + digit(9) + "\"";
        case 2:
            return "L" + digit(6) + "/" + names[pick(std::size(names))];
        default:
            return chance(2) ? "true" : "\"\"";
        }
    }

    std::mt19937 random_;
};

TEST(StyleReader, AgreesWithPlainReadingWhateverChanges) {
    for (unsigned seed = 0; seed < 150; ++seed) {
        SCOPED_TRACE(seed);
        RandomStyles random(seed);
        LogCapture log;
        const std::string text = random.file();
        StyleTree tree(text);
        tree.link();
        log.take(); // links that lead nowhere
        std::vector<LLayer*> layers;
        std::vector<StyleReader> readers;
        for (const std::unique_ptr<LObject>& child : tree.root.children()) {
            layers.push_back(child->as_layer());
            readers.emplace_back(child->as_layer());
        }
        for (int step = 0; step < 12; ++step) {
            const States states = random.states();
            for (std::size_t i = 0; i < layers.size(); ++i) {
                const NodeStyle expected = read_plainly(*layers[i], states);
                ASSERT_EQ(readers[i].read(states), expected) << text;
                ASSERT_EQ(read_node_style(layers[i], states), expected) << text;
            }
            LLayer& changed = *layers[random.pick(6)];
            const char* const name = RandomStyles::names[random.pick(13)];
            LAttribute* attribute = changed.find_attribute(name);
            if (attribute == nullptr)
                attribute = changed.add_child(std::make_unique<LAttribute>(name))->as_attribute();
            attribute->set_value(random.value());
        }
    }
}

} // namespace
} // namespace Layers
