#include "layers/inheritance.h"

#include "layers/load_limits.h"
#include "layers/object_records.h"
#include "layers/tree_paths.h"

#include <algorithm>
#include <memory>
#include <unordered_set>
#include <vector>

namespace Layers {
namespace {

// Copies what a layer inherits, on account of its "<<".
class Merger {
public:
    Merger(LLayer& derived, LoadLimits& limits)
        : derived_(derived)
        , limits_(limits) {}

    void run() {
        const LLayer& base = *derived_.base();
        Records::of(base).has_heirs = true;
        open_.push_back(begin(derived_, base));
        while (!open_.empty() && !is_over_)
            step();
        Records::of(derived_).is_cut_off = is_over_;
    }

private:
    /// One pair of layers being merged, and the children of the base still to come.
    struct Merge {
        LLayer* derived;
        std::vector<LLayer*> base_layers;
        std::size_t next = 0;
    };

    void step();
    Merge begin(LLayer& derived, const LLayer& base);
    void inherit_attribute(LLayer& derived, const LAttribute& base_attribute);
    void inherit_variants(LAttribute& derived, const LAttribute& base_attribute);
    void add_missing_variants(LAttribute& derived, const LAttribute& from);
    void order_like_base(LLayer& derived, const std::vector<LLayer*>& base_layers);
    std::unique_ptr<LLayer> clone_layer(LLayer& layer);
    bool spend(std::size_t units);

    LLayer& derived_;
    LoadLimits& limits_;
    std::vector<Merge> open_;
    bool is_over_ = false; ///< nothing more may be copied
};

bool Merger::spend(std::size_t units) {
    is_over_ = is_over_ || !limits_.spend_inheritance(units, Records::of(derived_).base_place);
    return !is_over_;
}

void copy_link(LAttribute& to, const LAttribute& from) {
    if (!from.has_link())
        return;
    Records::of(to).link = std::make_unique<AttributeLink>();
    Records::of(to).link->path = Records::of(from).link->path;
}

std::unique_ptr<LAttribute> clone_attribute(const LAttribute& attribute) {
    std::unique_ptr<LAttribute> clone = Records::make_attribute(Records::name(attribute));
    Records::of(*clone).value = Records::of(attribute).value;
    copy_link(*clone, attribute);
    for (const std::unique_ptr<LObject>& child : attribute.children())
        if (const LAttribute* const variant = child->as_attribute())
            clone->add_child(clone_attribute(*variant));
    return clone;
}

std::unique_ptr<LLayer> clone_alone(LLayer& layer) {
    std::unique_ptr<LLayer> clone = Records::make_layer(Records::name(layer));
    Records::reserve_children(*clone, layer.children().size());
    Records::LayerRecord& record = Records::of(*clone);
    record.base = layer.base();
    record.base_path = Records::of(layer).base_path;
    record.base_place = Records::of(layer).base_place;
    record.is_cut_off = Records::of(layer).is_cut_off;
    Records::linked(*clone) = Records::linked(layer);
    return clone;
}

// What an attribute costs to copy.
std::size_t size_of(const LAttribute& attribute) {
    return 1 + attribute.children().size() + attribute.link_path().size() / BYTES_PER_UNIT;
}

// What a layer without its children costs to copy or to compare.
std::size_t size_of(const LLayer& layer) {
    return 1 + layer.children().size() + layer.base_path().size() / BYTES_PER_UNIT;
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

// A deep copy with base and linked flag taken over, made without recursion over layers. Attributes
// and child layers keep their order among each other.
std::unique_ptr<LLayer> Merger::clone_layer(LLayer& layer) {
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
                if (!spend(size_of(*inner)))
                    return result;
                LObject* const added = clone->add_child(clone_alone(*inner));
                pending.push_back({inner, added->as_layer()});
            } else if (const LAttribute* const attribute = child->as_attribute()) {
                if (!spend(size_of(*attribute)))
                    return result;
                clone->add_child(clone_attribute(*attribute));
            }
        }
    }
    return result;
}

void Merger::add_missing_variants(LAttribute& derived, const LAttribute& from) {
    if (!spend(from.children().size()))
        return;
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
void Merger::inherit_variants(LAttribute& derived, const LAttribute& base_attribute) {
    add_missing_variants(derived, base_attribute);
    const LLayer* const base = base_attribute.parent()->as_layer();
    const bool is_complete = Records::of(base_attribute).inherited_in_load == tree_revisions.load;
    for (const LLayer* layer = is_complete ? nullptr : base->base(); layer && spend(1);
         layer = layer->base())
        if (const LAttribute* const same =
                Records::find_attribute(*layer, Records::name(base_attribute)))
            add_missing_variants(derived, *same);
    if (!is_over_ && derived.parent()->as_layer()->base() == base)
        Records::of(derived).inherited_in_load = tree_revisions.load;
}

// An attribute with a value of its own has the base's variants as well: they are looked up there.
void Merger::inherit_attribute(LLayer& derived, const LAttribute& base_attribute) {
    LAttribute* own = Records::find_attribute(derived, Records::name(base_attribute));
    if (own == nullptr) {
        own = derived.add_child(clone_attribute(base_attribute))->as_attribute();
    } else if (own->has_link() || !std::holds_alternative<std::monostate>(own->value())) {
        const std::size_t count = Records::variant_count(base_attribute);
        if (count > 0 && spend(count))
            Records::of(*own).variants_of_bases += static_cast<std::uint32_t>(count);
        return;
    } else if (base_attribute.has_link()) {
        Records::set_link(*own, Records::of(base_attribute).link->path);
    } else {
        Records::set_value(*own, Records::of(base_attribute.terminal()).value);
    }
    inherit_variants(*own, base_attribute);
}

// Puts the child layers that the base has as well first, in its order. They change places among
// themselves only; attributes stay where they are.
void Merger::order_like_base(LLayer& derived, const std::vector<LLayer*>& base_layers) {
    if (base_layers.empty())
        return;
    const std::vector<LLayer*>& before = Records::child_layers(derived);
    if (starts_like(before, base_layers) || !spend(derived.children().size()))
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

// Copies the base's attributes and lists its child layers as they are now: a merge may add to the
// base itself where it lies inside the derived layer. Who has copied from `derived` before may lack
// what it gets now, so no attribute counts as complete any more.
Merger::Merge Merger::begin(LLayer& derived, const LLayer& base) {
    if (!spend(size_of(base)))
        return {&derived, {}};
    const std::size_t count = base.children().size();
    for (std::size_t i = 0; i < count && !is_over_; ++i)
        if (const LAttribute* const attribute = base.children()[i]->as_attribute())
            inherit_attribute(derived, *attribute);
    if (Records::of(derived).has_heirs)
        ++tree_revisions.load;
    return {&derived, Records::child_layers(base)};
}

void Merger::step() {
    Merge& merge = open_.back();
    if (merge.next == merge.base_layers.size()) {
        order_like_base(*merge.derived, merge.base_layers);
        open_.pop_back();
        return;
    }
    LLayer& base_layer = *merge.base_layers[merge.next++];
    if (LLayer* const own = find_namesake(*merge.derived, base_layer))
        open_.push_back(begin(*own, base_layer));
    else if (spend(size_of(base_layer)))
        merge.derived->add_child(clone_layer(base_layer));
}

// One layer being linked: its base first, then its children, then the merge.
struct Linking {
    LLayer* layer;
    bool base_done = false;
    std::size_t next_child = 0;
};

class LinkWalk {
public:
    explicit LinkWalk(LoadLimits& limits)
        : limits_(limits) {}

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
                inherit(layer);
            Records::visiting(layer) = false;
            Records::linked(layer) = true;
        }
    }

    void inherit(LLayer& layer) {
        if (limits_.may_inherit(Records::of(layer).base_place))
            Merger(layer, limits_).run();
        else
            Records::of(layer).is_cut_off = true;
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

    LoadLimits& limits_;
    std::vector<Linking> open_;
};

} // namespace

void link_layer(LLayer& layer, LoadLimits& limits) {
    LinkWalk(limits).run(layer);
}

} // namespace Layers
