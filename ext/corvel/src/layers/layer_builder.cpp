#include "layers/layer_builder.h"

#include "layers/build_observer.h"
#include "layers/literal_pool.h"
#include "layers/load_limits.h"
#include "layers/name_unfolding.h"
#include "layers/object_records.h"

#include <algorithm>
#include <memory>
#include <optional>

namespace Layers {
namespace {

enum class ItemKind { StateSet, Attribute, Layer, GroupSet };

SharedName sorted_state_name(std::span<const std::string_view> states) {
    if (states.size() == 1)
        return SharedName(states.front());
    std::vector<std::string_view> sorted(states.begin(), states.end());
    std::sort(sorted.begin(), sorted.end());
    std::string name;
    for (const std::string_view state : sorted) {
        if (!name.empty())
            name += ':';
        name += state;
    }
    return SharedName(name);
}

// A value as all attributes take it that a declaration stands for.
struct PreparedValue {
    const ValueNode* node = nullptr;
    SharedName link; // empty for a literal
    SharedValue literal;
};

void assign_value(LAttribute& attribute, const PreparedValue& value) {
    if (std::holds_alternative<LiteralValue>(*value.node)) {
        attribute.clear_link(false);
        Records::set_value(attribute, value.literal);
    } else if (!value.link.empty()) {
        Records::set_link(attribute, value.link);
    }
}

// What repeating a body costs before any of its statements applies.
std::size_t weight_of(const LayerNode& node) {
    std::size_t weight = node.attributes.size() + node.layers.size() + node.group_sets.size();
    for (const GroupSetNode& group_set : node.group_sets)
        weight += group_set.attributes.size();
    for (const StateSetNode& set : node.state_sets) {
        weight += 1 + set.attributes.size() + set.group_sets.size();
        for (const GroupSetNode& group_set : set.group_sets)
            weight += group_set.attributes.size();
    }
    return weight;
}

std::size_t cost_of(std::string_view name) {
    return 1 + name.size() / BYTES_PER_UNIT;
}

LLayer& layer_of(LLayer& parent, std::string_view name) {
    const std::uint32_t hash = hash_name(name);
    if (LLayer* const found = Records::find_layer(parent, name, hash))
        return *found;
    return *parent.add_child(Records::make_layer(SharedName(name, hash)))->as_layer();
}

LAttribute& attribute_of(LAttribute& parent, const SharedName& state) {
    if (LAttribute* const found = Records::find_attribute(parent, state))
        return *found;
    return *parent.add_child(Records::make_attribute(state))->as_attribute();
}

LAttribute& attribute_of(LLayer& parent, std::string_view name) {
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

/// What a declaration of an attribute gives to each attribute that it stands for.
struct LayerBuilder::Assignment {
    struct Variant {
        SharedName state;
        PreparedValue value;
    };
    std::optional<PreparedValue> value; ///< none in a state-set
    std::vector<Variant> variants;      ///< inline states, or the one of the state-set
    std::uint64_t line = 0;

    /// What it costs to repeat.
    std::size_t cost() const { return 1 + variants.size(); }
};

LayerBuilder::LayerBuilder(LLayer& target, LoadLimits& limits, BuildObserver* observer)
    : target_(&target)
    , limits_(&limits)
    , observer_(observer)
    , scratch_(std::make_unique<Assignment>())
    , literals_(std::make_unique<LiteralPool>()) {}

LayerBuilder::~LayerBuilder() = default;

void LayerBuilder::pour(const FileNode& file, const SharedName& name) {
    ++tree_revisions.pour;
    file_ = name;
    prepared_.clear();
    if (observer_ != nullptr)
        observer_->on_file(name.text());
    open_body(file, *target_, false);
    while (!open_bodies_.empty()) {
        Body& body = open_bodies_.back();
        if (body.next == body.items.size()) {
            open_bodies_.pop_back();
            continue;
        }
        const Item item = body.items[body.next++];
        in_repetition_ = body.is_repetition;
        line_ = item.line;
        apply(*body.node, item, *body.layer);
    }
}

void LayerBuilder::open_body(const LayerNode& node, LLayer& layer, bool is_repetition) {
    if (is_repetition && !spend(weight_of(node)))
        return;
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
    const std::size_t base_cost = base_path.text().size() / BYTES_PER_UNIT;
    const bool in_repetition = in_repetition_;
    const std::size_t first_body = open_bodies_.size();
    bool is_first = true;
    for (LLayer* const outer : reached_)
        for_each_text(node.declaration.name, [&](std::string_view name) {
            const bool is_repetition = in_repetition || !is_first;
            if (is_repetition && !spend(cost_of(name) + base_cost))
                return;
            is_first = false;
            LLayer& layer = layer_of(*outer, name);
            if (node.base) {
                Records::of(layer).base_path = base_path;
                Records::of(layer).base_place = {file_, line_};
            }
            if (observer_ != nullptr)
                observer_->on_layer(layer, &node, line_);
            open_body(node, layer, is_repetition);
        });
    const auto bodies = open_bodies_.begin() + static_cast<std::ptrdiff_t>(first_body);
    std::reverse(bodies, open_bodies_.end());
}

void LayerBuilder::apply_attribute(const AttributeNode& node, LLayer& current) {
    const Assignment& assignment = prepare(node, nullptr, in_repetition_);
    for_each_attribute(node.declaration, current, assignment.cost(),
                       [&](LAttribute& attribute) { assign(attribute, assignment); });
}

// With states the values are state values, otherwise the attributes' own.
void LayerBuilder::apply_group_set(const GroupSetNode& node, LLayer& current,
                                   const StateSetNode* states) {
    const bool has_names = std::any_of(node.attributes.begin(), node.attributes.end(),
                                       [](const AttributeNode& attribute) {
                                           return stands_for_something(attribute.declaration.name);
                                       });
    if (!has_names || !stands_for_something(node.declaration.group) ||
        !walk(node.declaration.traversal, current))
        return;
    const bool is_repeated =
        in_repetition_ || reached_.size() > 1 || !is_plain(node.declaration.group);
    bool is_first = true;
    for (LLayer* const layer : reached_)
        for_each_text(node.declaration.group, [&](std::string_view group) {
            const std::string prefix = std::string(group) + '.';
            const bool is_repetition = in_repetition_ || !is_first;
            is_first = false;
            for (const AttributeNode& attribute : node.attributes) {
                const Assignment& assignment = prepare(attribute, states, is_repeated);
                for_each_name(attribute.declaration.name, prefix, *layer, assignment.cost(),
                              is_repetition,
                              [&](LAttribute& target) { assign(target, assignment); });
            }
        });
}

void LayerBuilder::apply_state_set(const StateSetNode& node, LLayer& current) {
    for (const AttributeNode& attribute : node.attributes) {
        const Assignment& assignment = prepare(attribute, &node, in_repetition_);
        for_each_attribute(attribute.declaration, current, assignment.cost(),
                           [&](LAttribute& target) { assign(target, assignment); });
    }
    for (const GroupSetNode& group_set : node.group_sets)
        apply_group_set(group_set, current, &node);
}

// Valid until the next call.
const LayerBuilder::Assignment&
LayerBuilder::prepare(const AttributeNode& node, const StateSetNode* states, bool is_repeated) {
    if (!is_repeated) {
        fill(*scratch_, node, states);
        return *scratch_;
    }
    std::unique_ptr<Assignment>& known = prepared_[&node];
    if (!known) {
        known = std::make_unique<Assignment>();
        fill(*known, node, states);
    }
    return *known;
}

void LayerBuilder::fill(Assignment& assignment, const AttributeNode& node,
                        const StateSetNode* states) {
    const auto prepared = [this](const ValueNode& value) {
        if (const auto* reference = std::get_if<ReferenceNode>(&value))
            return PreparedValue{&value, SharedName(reference_text(*reference)), {}};
        return PreparedValue{&value, {}, literals_->share(std::get<LiteralValue>(value))};
    };
    assignment.line = node.declaration.name.line;
    assignment.value.reset();
    assignment.variants.clear();
    if (states != nullptr) {
        assignment.variants.push_back({sorted_state_name(states->states), prepared(node.value)});
        return;
    }
    assignment.value = prepared(node.value);
    for (const StateNode& state : node.states)
        assignment.variants.push_back({sorted_state_name(state.states), prepared(state.value)});
}

void LayerBuilder::assign(LAttribute& attribute, const Assignment& assignment) {
    if (assignment.value) {
        assign_value(attribute, *assignment.value);
        if (observer_ != nullptr)
            observer_->on_value(attribute, *assignment.value->node, assignment.line);
    }
    for (const Assignment::Variant& variant : assignment.variants) {
        LAttribute& child = attribute_of(attribute, variant.state);
        std::uint32_t& inline_in_pour = Records::of(child).inline_in_pour;
        if (assignment.value)
            inline_in_pour = tree_revisions.pour;
        else if (inline_in_pour == tree_revisions.pour)
            continue;
        assign_value(child, variant.value);
        if (observer_ != nullptr)
            observer_->on_value(child, *variant.value.node, assignment.line);
    }
}

// Goes from a layer along a path whose names may stand for several layers each, making those that
// are missing. False, with nothing made, if a name of the path stands for none.
bool LayerBuilder::walk(std::span<const NameNode> path, LLayer& from) {
    if (!std::all_of(path.begin(), path.end(), stands_for_something))
        return false;
    if (in_repetition_ && !spend(path.size()))
        return false;
    reached_.assign(1, &from);
    const auto reach = [&](LLayer& outer, std::string_view name) {
        LLayer& layer = layer_of(outer, name);
        if (observer_ != nullptr)
            observer_->on_layer(layer, nullptr, line_);
        return &layer;
    };
    for (const NameNode& name : path) {
        if (reached_.size() == 1 && is_plain(name)) {
            reached_[0] = reach(*reached_[0], plain_text(name, name_buffer_));
            continue;
        }
        std::vector<LLayer*> next;
        for (LLayer* const layer : reached_)
            for_each_text(name, [&](std::string_view text) {
                if (next.empty() || spend(cost_of(text)))
                    next.push_back(reach(*layer, text));
            });
        reached_ = std::move(next);
    }
    return true;
}

template <class Visit>
void LayerBuilder::for_each_text(const NameNode& name, Visit visit) {
    if (is_plain(name))
        return visit(plain_text(name, name_buffer_));
    if (!limits_->has_repetitions())
        return;
    const std::vector<std::string> texts = unfold(name, MAX_NAME_TEXT);
    if (texts.empty() && stands_for_something(name))
        limits_->tell_long_name(name.line);
    for (const std::string& text : texts)
        visit(text);
}

// Visits the attributes of a declaration, made where missing: those of the path's first layer
// first, by group, the name varying fastest.
template <class Visit>
void LayerBuilder::for_each_attribute(const DeclarationName& declaration, LLayer& from,
                                      std::size_t cost, Visit visit) {
    const bool has_group = !declaration.group.empty();
    if (!stands_for_something(declaration.name) ||
        (has_group && !stands_for_something(declaration.group)) ||
        !walk(declaration.traversal, from))
        return;
    bool is_first = true;
    const auto visit_names = [&](LLayer& layer, const std::string& prefix) {
        for_each_name(declaration.name, prefix, layer, cost, in_repetition_ || !is_first, visit);
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
                                 std::size_t cost, bool is_repetition, Visit visit) {
    for_each_text(name, [&](std::string_view text) {
        if (is_repetition && !spend(cost + cost_of(text) + prefix.size() / BYTES_PER_UNIT))
            return;
        is_repetition = true; // from the second text on
        if (prefix.empty())
            return visit(attribute_of(layer, text));
        attribute_name_ = prefix;
        attribute_name_ += text;
        visit(attribute_of(layer, attribute_name_));
    });
}

bool LayerBuilder::spend(std::size_t units) {
    return limits_->spend_repetitions(units, line_);
}

} // namespace Layers
