#include "layers/layer_builder.h"

#include "layers/log.h"
#include "layers/name_unfolding.h"
#include "layers/object_records.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>

namespace Layers {
namespace {

constexpr std::size_t REPETITIONS_PER_FILE = 300'000;
constexpr std::size_t BYTES_PER_NAME = 1'000'000; // of all texts that an expansion stands for

enum class ItemKind { StateSet, Attribute, Layer, GroupSet };

std::string color_text(const Color& color) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "#%02x%02x%02x%02x", color.red, color.green, color.blue,
                  color.alpha);
    return text.data();
}

AttributeValue attribute_value(const LiteralValue& literal) {
    if (const auto* flag = std::get_if<bool>(&literal))
        return *flag;
    if (const auto* number = std::get_if<double>(&literal))
        return *number;
    if (const auto* text = std::get_if<std::string_view>(&literal))
        return std::string(*text);
    if (const auto* color = std::get_if<Color>(&literal))
        return color_text(*color);
    return {};
}

void assign_value(LAttribute& attribute, const ValueNode& value) {
    if (const auto* reference = std::get_if<ReferenceNode>(&value)) {
        attribute.set_link(reference_text(*reference));
        return;
    }
    attribute.clear_link(false);
    attribute.set_value(attribute_value(std::get<LiteralValue>(value)));
}

std::string sorted_state_name(std::span<const std::string_view> states) {
    std::vector<std::string_view> sorted(states.begin(), states.end());
    std::sort(sorted.begin(), sorted.end());
    std::string name;
    for (const std::string_view state : sorted) {
        if (!name.empty())
            name += ':';
        name += state;
    }
    return name;
}

LLayer& layer_of(LLayer& parent, std::string_view name) {
    const std::uint32_t hash = hash_name(name);
    if (LLayer* const found = Records::find_layer(parent, name, hash))
        return *found;
    return *parent.add_child(Records::make_layer(SharedName(name, hash)))->as_layer();
}

LAttribute& attribute_of(LObject& parent, std::string_view name) {
    const std::uint32_t hash = hash_name(name);
    if (LAttribute* const found = Records::find_attribute(parent, name, hash))
        return *found;
    return *parent.add_child(Records::make_attribute(SharedName(name, hash)))->as_attribute();
}

// The least line among the names in a state-set; 0 if it is empty.
std::uint64_t state_set_line(const StateSetNode& set) {
    std::uint64_t line = UINT64_MAX;
    for (const AttributeNode& attribute : set.attributes)
        line = std::min(line, attribute.declaration.name.line);
    for (const GroupSetNode& group_set : set.group_sets)
        line = std::min(line, group_set.declaration.name.line);
    return line == UINT64_MAX ? 0 : line;
}

} // namespace

/// One statement of a body, by its place in the list of its kind.
struct LayerBuilder::Item {
    std::uint64_t line;
    ItemKind kind;
    std::size_t index;
};

/// A body whose statements are being applied to a layer.
struct LayerBuilder::Body {
    const LayerNode* node;
    LLayer* layer;
    bool is_repetition;
    std::vector<Item> items; ///< in source order
    std::size_t next = 0;
};

LayerBuilder::LayerBuilder(LLayer& target)
    : target_(&target) {}

LayerBuilder::~LayerBuilder() = default;

void LayerBuilder::pour(const FileNode& file) {
    ++tree_revisions.pour;
    repetitions_left_ = REPETITIONS_PER_FILE;
    open_body(file, *target_, false);
    while (!open_bodies_.empty()) {
        Body& body = open_bodies_.back();
        if (body.next == body.items.size()) {
            open_bodies_.pop_back();
            continue;
        }
        const Item item = body.items[body.next++];
        in_repetition_ = body.is_repetition;
        apply(*body.node, item, *body.layer);
    }
    if (repetitions_left_ == 0)
        log_line("engine: Left out declarations; the expansions stand for too many names.");
}

void LayerBuilder::open_body(const LayerNode& node, LLayer& layer, bool is_repetition) {
    Body body{&node, &layer, is_repetition, {}};
    std::vector<Item>& items = body.items;
    items.reserve(node.state_sets.size() + node.attributes.size() + node.layers.size() +
                  node.group_sets.size());
    for (std::size_t i = 0; i < node.state_sets.size(); ++i)
        items.push_back({state_set_line(node.state_sets[i]), ItemKind::StateSet, i});
    const auto add = [&items](const auto& nodes, ItemKind kind) {
        for (std::size_t i = 0; i < nodes.size(); ++i)
            items.push_back({nodes[i].declaration.name.line, kind, i});
    };
    add(node.attributes, ItemKind::Attribute);
    add(node.layers, ItemKind::Layer);
    add(node.group_sets, ItemKind::GroupSet);
    const auto earlier = [](const Item& a, const Item& b) { return a.line < b.line; };
    if (!std::is_sorted(items.begin(), items.end(), earlier))
        std::stable_sort(items.begin(), items.end(), earlier);
    if (items.empty())
        return;
    if (layer.children().empty())
        Records::reserve_children(layer, items.size());
    open_bodies_.push_back(std::move(body));
}

void LayerBuilder::apply(const LayerNode& body, const Item& item, LLayer& layer) {
    switch (item.kind) {
    case ItemKind::StateSet:
        return apply_state_set(body.state_sets[item.index], layer);
    case ItemKind::Attribute:
        return apply_attribute(body.attributes[item.index], layer);
    case ItemKind::Layer:
        return apply_layer(body.layers[item.index], layer);
    case ItemKind::GroupSet:
        return apply_group_set(body.group_sets[item.index], layer, nullptr);
    }
}

// Makes the layers of a declaration and puts their bodies on the stack, the first on top.
void LayerBuilder::apply_layer(const LayerNode& node, LLayer& current) {
    if (!stands_for_something(node.declaration.name) || !walk(node.declaration.traversal, current))
        return;
    const SharedName base_path(node.base ? reference_text(*node.base) : std::string());
    const bool in_repetition = in_repetition_;
    const std::size_t first_body = open_bodies_.size();
    bool is_first = true;
    for (LLayer* const outer : reached_)
        for_each_text(node.declaration.name, [&](std::string_view name) {
            const bool is_repetition = in_repetition || !is_first;
            if (is_repetition && !spend_repetition())
                return;
            is_first = false;
            LLayer& layer = layer_of(*outer, name);
            if (node.base)
                Records::of(layer).base_path = base_path;
            open_body(node, layer, is_repetition);
        });
    const auto bodies = open_bodies_.begin() + static_cast<std::ptrdiff_t>(first_body);
    std::reverse(bodies, open_bodies_.end());
}

void LayerBuilder::apply_attribute(const AttributeNode& node, LLayer& current) {
    for_each_attribute(node.declaration, current,
                       [&](LAttribute& attribute) { assign(attribute, node); });
}

// With a state name the values are state values, otherwise the attributes' own.
void LayerBuilder::apply_group_set(const GroupSetNode& node, LLayer& current,
                                   const std::string* state_name) {
    const bool has_names = std::any_of(node.attributes.begin(), node.attributes.end(),
                                       [](const AttributeNode& attribute) {
                                           return stands_for_something(attribute.declaration.name);
                                       });
    if (!has_names || !stands_for_something(node.declaration.group) ||
        !walk(node.declaration.traversal, current))
        return;
    bool is_first = true;
    for (LLayer* const layer : reached_)
        for_each_text(node.declaration.group, [&](std::string_view group) {
            const std::string prefix = std::string(group) + '.';
            const bool is_repetition = in_repetition_ || !is_first;
            is_first = false;
            for (const AttributeNode& attribute : node.attributes)
                for_each_name(attribute.declaration.name, prefix, *layer, is_repetition,
                              [&](LAttribute& target) {
                                  if (state_name != nullptr)
                                      assign_state(target, *state_name, attribute.value, false);
                                  else
                                      assign(target, attribute);
                              });
        });
}

void LayerBuilder::apply_state_set(const StateSetNode& node, LLayer& current) {
    const std::string state_name = sorted_state_name(node.states);
    for (const AttributeNode& attribute : node.attributes)
        for_each_attribute(attribute.declaration, current, [&](LAttribute& target) {
            assign_state(target, state_name, attribute.value, false);
        });
    for (const GroupSetNode& group_set : node.group_sets)
        apply_group_set(group_set, current, &state_name);
}

void LayerBuilder::assign(LAttribute& attribute, const AttributeNode& node) {
    assign_value(attribute, node.value);
    for (const StateNode& state : node.states)
        assign_state(attribute, sorted_state_name(state.states), state.value, true);
}

void LayerBuilder::assign_state(LAttribute& attribute, const std::string& state_name,
                                const ValueNode& value, bool is_inline) {
    LAttribute& variant = attribute_of(attribute, state_name);
    std::uint32_t& inline_in_pour = Records::of(variant).inline_in_pour;
    if (is_inline)
        inline_in_pour = tree_revisions.pour;
    else if (inline_in_pour == tree_revisions.pour)
        return;
    assign_value(variant, value);
}

// Goes from a layer along a path whose names may stand for several layers each, making those that
// are missing. False, with nothing made, if a name of the path stands for none.
bool LayerBuilder::walk(std::span<const NameNode> path, LLayer& from) {
    if (!std::all_of(path.begin(), path.end(), stands_for_something))
        return false;
    reached_.assign(1, &from);
    for (const NameNode& name : path) {
        if (reached_.size() == 1 && is_plain(name)) {
            reached_[0] = &layer_of(*reached_[0], plain_text(name, name_buffer_));
            continue;
        }
        std::vector<LLayer*> next;
        for (LLayer* const layer : reached_)
            for_each_text(name, [&](std::string_view text) {
                if (next.empty() || spend_repetition())
                    next.push_back(&layer_of(*layer, text));
            });
        reached_ = std::move(next);
    }
    return true;
}

template <class Visit>
void LayerBuilder::for_each_text(const NameNode& name, Visit visit) {
    if (is_plain(name))
        return visit(plain_text(name, name_buffer_));
    if (repetitions_left_ == 0)
        return;
    const std::vector<std::string> texts = unfold(name, BYTES_PER_NAME);
    if (texts.empty() && stands_for_something(name))
        repetitions_left_ = 0;
    for (const std::string& text : texts)
        visit(text);
}

// Visits the attributes of a declaration, made where missing: those of the path's first layer
// first, by group, the name varying fastest.
template <class Visit>
void LayerBuilder::for_each_attribute(const DeclarationName& declaration, LLayer& from,
                                      Visit visit) {
    const bool has_group = !declaration.group.empty();
    if (!stands_for_something(declaration.name) ||
        (has_group && !stands_for_something(declaration.group)) ||
        !walk(declaration.traversal, from))
        return;
    bool is_first = true;
    const auto visit_names = [&](LLayer& layer, const std::string& prefix) {
        for_each_name(declaration.name, prefix, layer, in_repetition_ || !is_first, visit);
        is_first = false;
    };
    for (LLayer* const layer : reached_) {
        if (has_group)
            for_each_text(declaration.group, [&](std::string_view group) {
                visit_names(*layer, std::string(group) + '.');
            });
        else
            visit_names(*layer, {});
    }
}

// Visits the attributes of a layer that are named by `prefix` and a text of `name`.
template <class Visit>
void LayerBuilder::for_each_name(const NameNode& name, const std::string& prefix, LLayer& layer,
                                 bool is_repetition, Visit visit) {
    for_each_text(name, [&](std::string_view text) {
        if (is_repetition && !spend_repetition())
            return;
        is_repetition = true; // from the second text on
        if (prefix.empty())
            return visit(attribute_of(layer, text));
        attribute_name_ = prefix;
        attribute_name_ += text;
        visit(attribute_of(layer, attribute_name_));
    });
}

bool LayerBuilder::spend_repetition() {
    if (repetitions_left_ == 0)
        return false;
    --repetitions_left_;
    return true;
}

} // namespace Layers
