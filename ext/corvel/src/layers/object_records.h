#pragma once

#include "layers/name_index.h"
#include "layers/object_model.h"
#include "layers/pooled.h"
#include "layers/shared_name.h"

#include <cstddef>
#include <cstdint>
#include <memory>
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
    std::uint32_t pour = 0; ///< counts the files poured
    std::size_t copies = 0; ///< layers copied by inheritance in this load
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

/// A state variant that counts for an attribute, its own or an inherited one.
struct StateVariant {
    LAttribute* attribute = nullptr;
    std::uint32_t state_count = 0;
};

/// The variants in force for an attribute, those with the most states first, then by name.
struct StateCache {
    std::vector<StateVariant> variants;
    std::uint64_t shape_revision = 0; ///< that the cache was built for
};

struct LAttribute::Implementation : Pooled<LAttribute::Implementation> {
    AttributeValue value;
    std::unique_ptr<AttributeLink> link;
    std::unique_ptr<Dependents> dependents; ///< null until the first
    std::unique_ptr<StateCache> states;     ///< null until read under states
    Signal value_changed;
    Signal link_changed;
    std::uint32_t inherited_in_load = 0; ///< the load in which it got all variants of its bases
    std::uint32_t inline_in_pour = 0;    ///< of a variant: the pour in which an inline state set it
};

struct LLayer::Implementation {
    LLayer* base = nullptr;
    SharedName base_path;
    bool has_heirs = false; ///< some layer has copied from it
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
    static bool& visiting(LLayer& layer) { return layer.visiting; }
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

    /// Lists the state variants in force for an attribute: its own, then those of the same
    /// attribute of each base that it lacks.
    static void collect_variants(const LAttribute& attribute, std::vector<StateVariant>& variants);
    /// The same list, kept until the tree's shape changes.
    static const std::vector<StateVariant>& state_variants(const LAttribute& attribute);

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
