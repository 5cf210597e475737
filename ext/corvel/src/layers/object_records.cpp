#include "layers/object_records.h"

#include <algorithm>

namespace Layers {
namespace {

// A layer and an attribute may bear one name: their keys differ.
constexpr std::uint32_t LAYER_KEY_SALT = 0x5BD1E995;

constexpr std::size_t COMPACTED_FROM = 16;

std::uint32_t child_key(std::uint32_t name_hash, bool is_layer) {
    return is_layer ? name_hash ^ LAYER_KEY_SALT : name_hash;
}

std::uint32_t child_key(const LObject& child) {
    return child_key(Records::name(child).hash(), child.as_layer() != nullptr);
}

template <class Matches>
LObject* find_child(const LObject& parent, std::uint32_t key, Matches matches) {
    const ChildList* const children = Records::object(parent).children.get();
    if (children == nullptr)
        return nullptr;
    const std::size_t position =
        children->index.find(key, [&](std::size_t p) { return matches(*children->objects[p]); });
    return position == NameIndex::npos ? nullptr : children->objects[position].get();
}

ChildList& child_list(LObject& parent) {
    std::unique_ptr<ChildList>& children = Records::object(parent).children;
    if (!children)
        children = std::make_unique<ChildList>();
    return *children;
}

// Whether a layer may have copied the variants of this attribute.
bool has_heirs(const LObject& object) {
    if (object.as_attribute() == nullptr || object.parent() == nullptr)
        return false;
    const LLayer* const layer = object.parent()->as_layer();
    return layer != nullptr && Records::of(*layer).has_heirs;
}

void compact(Dependents& dependents) {
    std::erase(dependents.list, nullptr);
    dependents.departed = 0;
    for (std::size_t slot = 0; slot < dependents.list.size(); ++slot)
        Records::of(*dependents.list[slot]).link->slot = static_cast<std::uint32_t>(slot);
}

void leave_target(AttributeLink& link) {
    Dependents& dependents = Records::of(*link.target).extras->dependents;
    dependents.list[link.slot] = nullptr;
    ++dependents.version;
    ++dependents.departed;
    link.target = nullptr;
    if (dependents.departed >= COMPACTED_FROM && dependents.departed * 2 > dependents.list.size())
        compact(dependents);
}

} // namespace

LAttribute* Records::find_attribute(const LObject& parent, std::string_view name,
                                    std::uint32_t hash) {
    LObject* const found = find_child(parent, child_key(hash, false), [&](LObject& child) {
        return child.as_attribute() != nullptr && child.name() == name;
    });
    return found != nullptr ? found->as_attribute() : nullptr;
}

LLayer* Records::find_layer(const LObject& parent, std::string_view name, std::uint32_t hash) {
    LObject* const found = find_child(parent, child_key(hash, true), [&](LObject& child) {
        return child.as_layer() != nullptr && child.name() == name;
    });
    return found != nullptr ? found->as_layer() : nullptr;
}

LAttribute* Records::find_attribute(const LObject& parent, const SharedName& name) {
    LObject* const found = find_child(parent, child_key(name.hash(), false), [&](LObject& child) {
        return child.as_attribute() != nullptr && Records::name(child) == name;
    });
    return found != nullptr ? found->as_attribute() : nullptr;
}

LLayer* Records::find_layer(const LObject& parent, const SharedName& name) {
    LObject* const found = find_child(parent, child_key(name.hash(), true), [&](LObject& child) {
        return child.as_layer() != nullptr && Records::name(child) == name;
    });
    return found != nullptr ? found->as_layer() : nullptr;
}

const std::vector<LLayer*>& Records::child_layers(const LObject& parent) {
    static const std::vector<LLayer*> none;
    const ChildList* const children = object(parent).children.get();
    return children != nullptr ? children->layers : none;
}

void Records::reserve_children(LObject& parent, std::size_t count) {
    if (count == 0)
        return;
    ChildList& children = child_list(parent);
    children.objects.reserve(count);
    children.index.reserve(count);
}

LObject* LObject::add_child(std::unique_ptr<LObject> child) {
    LObject* const added = child.get();
    added->object_->parent = this;
    ChildList& children = child_list(*this);
    children.index.add(child_key(*added));
    if (LLayer* const layer = added->as_layer())
        children.layers.push_back(layer);
    else if (has_heirs(*this))
        tree_revisions.late_variants = true;
    children.objects.push_back(std::move(child));
    ++object_->version;
    note_shape_change();
    return added;
}

void Records::reindex(LObject& parent) {
    ChildList& children = child_list(parent);
    children.index.clear();
    for (const std::unique_ptr<LObject>& child : children.objects)
        children.index.add(child_key(*child));
}

void Records::reorder_layers(LLayer& parent, const std::vector<LLayer*>& layers) {
    ChildList& children = child_list(parent);
    std::vector<std::unique_ptr<LObject>>& objects = children.objects;
    std::size_t next = 0;
    for (std::unique_ptr<LObject>& place : objects)
        if (place->as_layer() != nullptr)
            place.release();
    for (std::unique_ptr<LObject>& place : objects)
        if (place == nullptr)
            place.reset(layers[next++]);
    children.layers = layers;
    reindex(parent);
    note_shape_change();
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
    Dependents& dependents = of(*target).more().dependents;
    link.slot = static_cast<std::uint32_t>(dependents.list.size());
    dependents.list.push_back(&attribute);
    ++dependents.version;
}

} // namespace Layers
