#pragma once

#include "layers/name_index.h"
#include "layers/object_model.h"
#include "layers/pooled.h"
#include "layers/shared_name.h"
#include "layers/shared_value.h"
#include "layers/source_place.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Layers {

// The state behind the objects of a style tree, for the passes that build and link it. A tree has
// many more attributes than anything else, so what most of them lack is held behind a pointer.

/// Counts changes for `style_revision`. Changes of shape - children, names, links and bases, but
/// not values - are counted on their own as well: what depends on the shape alone, such as a state
/// cache, stays valid while values change.
struct TreeRevisions {
    std::uint64_t any = 1;
    std::uint64_t shape = 1;
    /// Counts the loads whose layers are being linked, and the layers changed after others had
    /// copied from them.
    std::uint32_t load = 1;
    std::uint32_t pour = 0;     ///< counts the files poured
    bool late_variants = false; ///< a base got a state variant after others had copied from it
};
inline TreeRevisions tree_revisions;

inline void note_value_change() {
    ++tree_revisions.any;
}

inline void note_shape_change() {
    ++tree_revisions.any;
    ++tree_revisions.shape;
}

struct ChildList : Pooled<ChildList> {
    std::vector<std::unique_ptr<LObject>> objects;
    NameIndex index;             ///< of the objects, by name and kind
    std::vector<LLayer*> layers; ///< those among the objects, in order
};

struct LObject::Implementation : Pooled<LObject::Implementation> {
    SharedName name;
    LObject* parent = nullptr;
    std::uint64_t version = 0;
    std::unique_ptr<ChildList> children; ///< null until the first
    Signal destroyed;
};

/// A link to another attribute. While resolved, `target` lists this attribute at `slot` of its
/// dependents.
struct AttributeLink : Pooled<AttributeLink> {
    SharedName path;
    LAttribute* target = nullptr;
    std::uint32_t slot = 0;
    bool cyclic = false;
};

/// The attributes that are linked to one, in order of linking.
struct Dependents {
    std::vector<LAttribute*> list; ///< null where one has left
    std::size_t departed = 0;      ///< how many are null
    std::uint64_t version = 0;     ///< raised with each one that comes or goes
};

/// A state variant that counts for an attribute, its own or an inherited one, with the states that
/// it needs, by their places in a list of names.
struct StateVariant {
    LAttribute* attribute = nullptr;
    std::uint32_t first_state = 0;
    std::uint32_t state_count = 0;
};

/// What an attribute's value can be, for one shape of the tree: by its own variants, those with the
/// most states first, then by name; then by those of the attributes that its links lead through;
/// in the end the value behind the links. Attributes that link to one share what lies behind it.
struct StateCache : Pooled<StateCache> {
    std::vector<StateVariant> variants;
    std::vector<SharedName> states;       ///< that the variants need
    const StateCache* behind = nullptr;   ///< of the next attribute along the links with variants
    const LAttribute* terminal = nullptr; ///< at the end of the links
    std::uint64_t shape_revision = 0;     ///< that the cache was built for

    // The answer given last, for chains of links that many attributes lead into.
    mutable std::uint64_t answered_for = 0; ///< number of the active states
    mutable const LAttribute* answer = nullptr;
};

/// States that hold, made comparable by place. The active states used last are kept.
class ActiveStates {
public:
    /// `names` as they are to be asked for by `holds`.
    static const ActiveStates& of(const std::vector<std::string>& names);

    bool holds(const SharedName& state) const {
        for (const SharedName& active : shared_)
            if (active == state)
                return true;
        return false;
    }
    std::uint64_t number() const { return number_; } ///< different for different states

private:
    std::vector<std::string> names_;
    std::vector<SharedName> shared_;
    std::uint64_t number_ = 1;
};

/// What few attributes have.
struct AttributeExtras : Pooled<AttributeExtras> {
    Dependents dependents;
    std::unique_ptr<StateCache> states; ///< null until read under states
    Signal value_changed;
    Signal link_changed;
};

struct LAttribute::Implementation : Pooled<LAttribute::Implementation> {
    SharedValue value;
    std::unique_ptr<AttributeLink> link;
    std::unique_ptr<AttributeExtras> extras; ///< null until needed
    std::uint32_t inherited_in_load = 0;     ///< the load in which it got all variants of its bases
    std::uint32_t inline_in_pour = 0; ///< of a variant: the pour in which an inline state set it
    /// How many variants it has in force beyond its own, at most; those of its bases, if it has a
    /// value of its own.
    std::uint32_t variants_of_bases = 0;

    AttributeExtras& more() {
        if (!extras)
            extras = std::make_unique<AttributeExtras>();
        return *extras;
    }
};

struct LLayer::Implementation : Pooled<LLayer::Implementation> {
    LLayer* base = nullptr;
    SharedName base_path;
    SourcePlace base_place;  ///< of the "<<"
    bool has_heirs = false;  ///< some layer has copied from it
    bool is_cut_off = false; ///< it was left without what it inherits
};

/// Access to the state of objects. Everything here keeps the indexes and revisions right.
struct Records {
    using ObjectRecord = LObject::Implementation;
    using AttributeRecord = LAttribute::Implementation;
    using LayerRecord = LLayer::Implementation;

    static ObjectRecord& object(const LObject& object) { return *object.object_; }
    static AttributeRecord& of(const LAttribute& attribute) { return *attribute.attribute_; }
    static LayerRecord& of(const LLayer& layer) { return *layer.layer_; }
    static const SharedName& name(const LObject& object) { return object.object_->name; }
    static const SharedName& link_path(const LAttribute& attribute) {
        return attribute.attribute_->link->path;
    }
    static bool& visiting(LLayer& layer) { return layer.visiting; }
    static bool visiting(const LLayer& layer) { return layer.visiting; }
    static bool& linked(LLayer& layer) { return layer.linked; }

    static std::unique_ptr<LAttribute> make_attribute(SharedName name);
    static std::unique_ptr<LLayer> make_layer(SharedName name);

    /// The child of exactly this kind and name; null if missing.
    static LAttribute* find_attribute(const LObject& parent, std::string_view name,
                                      std::uint32_t hash);
    static LLayer* find_layer(const LObject& parent, std::string_view name, std::uint32_t hash);
    static LAttribute* find_attribute(const LObject& parent, const SharedName& name);
    static LLayer* find_layer(const LObject& parent, const SharedName& name);

    static const std::vector<LLayer*>& child_layers(const LObject& parent);

    /// Makes room for children to come.
    static void reserve_children(LObject& parent, std::size_t count);
    /// Rebuilds the index after children changed their places or names.
    static void reindex(LObject& parent);
    /// Puts the child layers of `parent` into the order of `layers`, which lists them all, in the
    /// places that layers have among its children.
    static void reorder_layers(LLayer& parent, const std::vector<LLayer*>& layers);

    /// `set_value` and `set_link` of an attribute, with what is shared already.
    static void set_value(LAttribute& attribute, const SharedValue& value);
    static void set_link(LAttribute& attribute, const SharedName& path);

    /// How many state variants are in force for an attribute, at most.
    static std::size_t variant_count(const LAttribute& attribute);
    /// What the attribute's value can be; null if it has no variants and none lie along its links.
    /// Valid until the tree's shape changes.
    static const StateCache* state_cache(const LAttribute& attribute);
    /// The attribute at the end of the links; along long chains remembered until the shape changes.
    static const LAttribute& terminal(const LAttribute& attribute);
    /// The attribute whose own value is in force; `cache` as `state_cache` gives it.
    static const LAttribute& value_source(const StateCache& cache, const ActiveStates& active);

    /// Joins `attribute` to the dependents of `target`, after leaving its present target. Null
    /// leaves only. The attribute must have a link.
    static void attach(LAttribute& attribute, LAttribute* target);
};

/// Calls `visit` with each state of a variant's name, "A:B" being A and B, until it says false.
/// Whether it always said true.
template <class Visit>
bool all_states(std::string_view name, Visit visit) {
    for (;;) {
        const std::size_t colon = name.find(':');
        if (!visit(name.substr(0, colon)))
            return false;
        if (colon == std::string_view::npos)
            return true;
        name.remove_prefix(colon + 1);
    }
}

} // namespace Layers
