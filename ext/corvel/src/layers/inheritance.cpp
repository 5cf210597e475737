#include "layers/linker.h"
#include "layers/log.h"
#include "layers/object_records.h"
#include "layers/tree_paths.h"

#include <algorithm>
#include <memory>
#include <unordered_set>
#include <vector>

namespace Layers {
namespace {

// Layers that hold each other's copies double with every step. Far beyond what any interface has,
// copying stops.
constexpr std::size_t COPIES_PER_LOAD = 500'000;

bool may_copy_layer() {
    if (tree_revisions.copies == COPIES_PER_LOAD)
        log_line("engine: Left out inherited layers; there are too many.");
    return tree_revisions.copies++ < COPIES_PER_LOAD;
}

void copy_link(LAttribute& to, const LAttribute& from) {
    if (!from.has_link())
        return;
    Records::of(to).link = std::make_unique<AttributeLink>();
    Records::of(to).link->path = Records::of(from).link->path;
}

std::unique_ptr<LAttribute> clone_attribute(const LAttribute& attribute) {
    std::unique_ptr<LAttribute> clone = Records::make_attribute(Records::name(attribute));
    Records::of(*clone).value = attribute.value();
    copy_link(*clone, attribute);
    for (const std::unique_ptr<LObject>& child : attribute.children())
        if (const LAttribute* const variant = child->as_attribute())
            clone->add_child(clone_attribute(*variant));
    return clone;
}

std::unique_ptr<LLayer> clone_alone(LLayer& layer) {
    std::unique_ptr<LLayer> clone = Records::make_layer(Records::name(layer));
    Records::reserve_children(*clone, layer.children().size());
    Records::of(*clone).base = layer.base();
    Records::of(*clone).base_path = Records::of(layer).base_path;
    Records::linked(*clone) = Records::linked(layer);
    return clone;
}

// A deep copy with base and linked flag taken over, made without recursion over layers. Attributes
// and child layers keep their order among each other.
std::unique_ptr<LLayer> clone_layer(LLayer& layer) {
    struct Pair {
        LLayer* original;
        LLayer* clone;
    };
    std::unique_ptr<LLayer> result = clone_alone(layer);
    std::vector<Pair> pending{{&layer, result.get()}};
    while (!pending.empty()) {
        const auto [original, clone] = pending.back();
        pending.pop_back();
        for (const std::unique_ptr<LObject>& child : original->children()) {
            if (LLayer* const inner = child->as_layer()) {
                if (!may_copy_layer())
                    continue;
                LObject* const added = clone->add_child(clone_alone(*inner));
                pending.push_back({inner, added->as_layer()});
            } else if (const LAttribute* const attribute = child->as_attribute()) {
                clone->add_child(clone_attribute(*attribute));
            }
        }
    }
    return result;
}

void add_missing_variants(LAttribute& derived, const LAttribute& from) {
    for (const std::unique_ptr<LObject>& child : from.children()) {
        const LAttribute* const variant = child->as_attribute();
        if (variant == nullptr)
            continue;
        if (Records::find_attribute(derived, Records::name(*variant)) == nullptr)
            derived.add_child(clone_attribute(*variant));
    }
}

// Gives `derived` the state variants of `base_attribute` that it lacks, and those which that one
// inherits - unless it holds these already since this very load. A child that is merged because of
// its name may have another base, whose variants it then still lacks.
void inherit_variants(LAttribute& derived, const LAttribute& base_attribute) {
    add_missing_variants(derived, base_attribute);
    const LLayer* const base = base_attribute.parent()->as_layer();
    const bool is_complete = Records::of(base_attribute).inherited_in_load == tree_revisions.load;
    for (const LLayer* layer = is_complete ? nullptr : base->base(); layer; layer = layer->base())
        if (const LAttribute* const same =
                Records::find_attribute(*layer, Records::name(base_attribute)))
            add_missing_variants(derived, *same);
    if (derived.parent()->as_layer()->base() == base)
        Records::of(derived).inherited_in_load = tree_revisions.load;
}

void inherit_attribute(LLayer& derived, const LAttribute& base_attribute) {
    LAttribute* own = Records::find_attribute(derived, Records::name(base_attribute));
    if (own == nullptr) {
        own = derived.add_child(clone_attribute(base_attribute))->as_attribute();
    } else {
        if (own->has_link() || !std::holds_alternative<std::monostate>(own->value()))
            return;
        if (!own->set_link(base_attribute.link_path()))
            own->set_value(base_attribute.terminal_value());
    }
    inherit_variants(*own, base_attribute);
}

LLayer* find_namesake(const LLayer& layer, const LLayer& other) {
    return Records::find_layer(layer, Records::name(other));
}

bool starts_like(const std::vector<LLayer*>& layers, const std::vector<LLayer*>& start) {
    const auto same_name = [](const LLayer* a, const LLayer* b) {
        return Records::name(*a) == Records::name(*b);
    };
    return layers.size() >= start.size() &&
           std::equal(start.begin(), start.end(), layers.begin(), same_name);
}

// Puts the child layers that the base has as well first, in its order. They change places among
// themselves only; attributes stay where they are.
void order_like_base(LLayer& derived, const std::vector<LLayer*>& base_layers) {
    if (base_layers.empty())
        return;
    const std::vector<LLayer*>& before = Records::child_layers(derived);
    if (starts_like(before, base_layers))
        return;
    std::vector<LLayer*> after;
    std::unordered_set<const LLayer*> placed;
    const auto place = [&](LLayer* layer) {
        if (placed.insert(layer).second)
            after.push_back(layer);
    };
    for (const LLayer* const base_layer : base_layers)
        if (LLayer* const namesake = find_namesake(derived, *base_layer))
            place(namesake);
    for (LLayer* const layer : before)
        place(layer);
    Records::reorder_layers(derived, after);
}

// One pair of layers being merged, and the children of the base still to come.
struct Merge {
    LLayer* derived;
    std::vector<LLayer*> base_layers;
    std::size_t next = 0;
};

// Copies the base's attributes and lists its child layers as they are now: a merge may add to the
// base itself where it lies inside the derived layer. Who has copied from `derived` before may lack
// what it gets now, so no attribute counts as complete any more.
Merge begin_merge(LLayer& derived, const LLayer& base) {
    const std::size_t count = base.children().size();
    for (std::size_t i = 0; i < count; ++i)
        if (const LAttribute* const attribute = base.children()[i]->as_attribute())
            inherit_attribute(derived, *attribute);
    if (Records::of(derived).has_heirs)
        ++tree_revisions.load;
    return {&derived, Records::child_layers(base)};
}

void merge_base(LLayer& derived, const LLayer& base) {
    Records::of(base).has_heirs = true;
    std::vector<Merge> open{begin_merge(derived, base)};
    while (!open.empty()) {
        Merge& merge = open.back();
        if (merge.next == merge.base_layers.size()) {
            order_like_base(*merge.derived, merge.base_layers);
            open.pop_back();
            continue;
        }
        LLayer& base_layer = *merge.base_layers[merge.next++];
        if (LLayer* const own = find_namesake(*merge.derived, base_layer))
            open.push_back(begin_merge(*own, base_layer));
        else if (may_copy_layer())
            merge.derived->add_child(clone_layer(base_layer));
    }
}

// One layer being linked: its base first, then its children, then the merge.
struct Linking {
    LLayer* layer;
    bool base_done = false;
    std::size_t next_child = 0;
};

class LinkWalk {
public:
    void run(LLayer& layer) {
        begin(layer);
        while (!open_.empty())
            step();
    }

private:
    void begin(LLayer& layer) {
        if (Records::visiting(layer) || Records::linked(layer))
            return;
        Records::visiting(layer) = true;
        open_.push_back({&layer});
    }

    void step() {
        Linking& linking = open_.back();
        LLayer& layer = *linking.layer;
        if (!linking.base_done) {
            linking.base_done = true;
            begin_base(layer);
        } else if (linking.next_child < Records::child_layers(layer).size()) {
            begin(*Records::child_layers(layer)[linking.next_child++]);
        } else {
            open_.pop_back();
            if (layer.base() != nullptr)
                merge_base(layer, *layer.base());
            Records::visiting(layer) = false;
            Records::linked(layer) = true;
        }
    }

    void begin_base(LLayer& layer) {
        LLayer*& base = Records::of(layer).base;
        if (base == nullptr)
            return;
        if (Records::visiting(*base)) {
            base = nullptr;
            note_shape_change();
        } else {
            begin(*base);
        }
    }

    std::vector<Linking> open_;
};

} // namespace

void link_layer(LLayer& layer) {
    LinkWalk().run(layer);
}

} // namespace Layers
