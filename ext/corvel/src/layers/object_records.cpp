#include "layers/object_records.h"

#include <algorithm>

namespace Layers {
namespace {

// A layer and an attribute may bear one name: their keys differ.
constexpr std::uint32_t layer_key_salt = 0x5BD1E995;

constexpr std::size_t compacted_from = 16;

std::vector<std::string_view> split_states(std::string_view name) {
    std::vector<std::string_view> states;
    for (std::size_t colon = name.find(':'); colon != std::string_view::npos;
         colon = name.find(':')) {
        states.push_back(name.substr(0, colon));
        name.remove_prefix(colon + 1);
    }
    states.push_back(name);
    return states;
}

void add_variants(std::vector<StateVariant>& variants, const LAttribute& attribute) {
    const std::size_t known = variants.size();
    for (const std::unique_ptr<LObject>& child : attribute.children()) {
        LAttribute* const variant = child->as_attribute();
        if (variant == nullptr)
            continue;
        const auto same_name = [&](const StateVariant& other) {
            return other.attribute->name() == variant->name();
        };
        const auto known_end = variants.begin() + static_cast<std::ptrdiff_t>(known);
        if (std::none_of(variants.begin(), known_end, same_name))
            variants.push_back({variant, split_states(variant->name())});
    }
}

bool outranks(const StateVariant& a, const StateVariant& b) {
    if (a.states.size() != b.states.size())
        return a.states.size() > b.states.size();
    return a.attribute->name() < b.attribute->name();
}

// The attribute's own variants, then those of the same attribute of each base that it lacks.
void collect_variants(std::vector<StateVariant>& variants, const LAttribute& attribute) {
    variants.clear();
    add_variants(variants, attribute);
    const LLayer* layer = attribute.parent() ? attribute.parent()->as_layer() : nullptr;
    for (layer = layer ? layer->base() : nullptr; layer != nullptr; layer = layer->base()) {
        const std::uint32_t hash = Records::object(attribute).name_hash;
        if (const LAttribute* same = Records::find_attribute(*layer, attribute.name(), hash))
            add_variants(variants, *same);
    }
    std::stable_sort(variants.begin(), variants.end(), outranks);
}

void compact_dependents(Records::AttributeRecord& record) {
    std::erase(record.dependents, nullptr);
    record.departed = 0;
    for (std::size_t slot = 0; slot < record.dependents.size(); ++slot)
        Records::of(*record.dependents[slot]).link->slot = slot;
}

void leave_target(AttributeLink& link) {
    Records::AttributeRecord& record = Records::of(*link.target);
    record.dependents[link.slot] = nullptr;
    ++record.dependents_version;
    ++record.departed;
    link.target = nullptr;
    if (record.departed >= compacted_from && record.departed * 2 > record.dependents.size())
        compact_dependents(record);
}

} // namespace

std::uint32_t child_key(std::uint32_t name_hash, bool is_layer) {
    return is_layer ? name_hash ^ layer_key_salt : name_hash;
}

LAttribute* Records::find_attribute(const LObject& parent, std::string_view name,
                                    std::uint32_t hash) {
    const ObjectRecord& record = object(parent);
    const auto matches = [&](std::size_t position) {
        LObject& child = *record.children[position];
        return child.as_attribute() != nullptr && child.name() == name;
    };
    const std::size_t position = record.index.find(child_key(hash, false), matches);
    return position == NameIndex::npos ? nullptr : record.children[position]->as_attribute();
}

LLayer* Records::find_layer(const LObject& parent, std::string_view name, std::uint32_t hash) {
    const ObjectRecord& record = object(parent);
    const auto matches = [&](std::size_t position) {
        LObject& child = *record.children[position];
        return child.as_layer() != nullptr && child.name() == name;
    };
    const std::size_t position = record.index.find(child_key(hash, true), matches);
    return position == NameIndex::npos ? nullptr : record.children[position]->as_layer();
}

LObject* LObject::add_child(std::unique_ptr<LObject> child) {
    LObject* const added = child.get();
    added->object_->parent = this;
    object_->index.add(child_key(added->object_->name_hash, added->as_layer() != nullptr));
    object_->children.push_back(std::move(child));
    ++object_->version;
    note_shape_change();
    return added;
}

void Records::reindex(LObject& parent) {
    ObjectRecord& record = object(parent);
    record.index.clear();
    for (const std::unique_ptr<LObject>& child : record.children)
        record.index.add(child_key(object(*child).name_hash, child->as_layer() != nullptr));
}

void Records::reorder_layers(LLayer& parent, const std::vector<LLayer*>& layers) {
    ObjectRecord& record = object(parent);
    std::size_t next = 0;
    for (std::unique_ptr<LObject>& place : record.children)
        if (place->as_layer() != nullptr)
            place.release();
    for (std::unique_ptr<LObject>& place : record.children)
        if (place == nullptr)
            place.reset(layers[next++]);
    reindex(parent);
    note_shape_change();
}

const std::vector<StateVariant>& Records::state_variants(const LAttribute& attribute) {
    AttributeRecord& record = of(attribute);
    if (record.state_cache_revision != tree_revisions.shape) {
        collect_variants(record.state_cache, attribute);
        record.state_cache_revision = tree_revisions.shape;
    }
    return record.state_cache;
}

void Records::attach(LAttribute& attribute, LAttribute* target) {
    AttributeLink& link = *of(attribute).link;
    if (link.target == target)
        return;
    if (link.target != nullptr)
        leave_target(link);
    link.target = target;
    note_shape_change();
    if (target == nullptr)
        return;
    AttributeRecord& record = of(*target);
    link.slot = record.dependents.size();
    record.dependents.push_back(&attribute);
    ++record.dependents_version;
}

} // namespace Layers
