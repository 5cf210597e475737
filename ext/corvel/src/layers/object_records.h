#pragma once

#include "layers/name_index.h"
#include "layers/object_model.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Layers {

// The state behind the objects of a style tree, for the passes that build and link it.

/// Counts changes for `style_revision`. Changes of shape - children, names, links and bases, but
/// not values - are counted on their own as well: what depends on the shape alone, such as a state
/// cache, stays valid while values change.
struct TreeRevisions {
    std::uint64_t any = 1;
    std::uint64_t shape = 1;
    std::uint64_t load = 0; ///< counts the loads whose layers are being linked
};
inline TreeRevisions tree_revisions;

inline void note_value_change() {
    ++tree_revisions.any;
}

inline void note_shape_change() {
    ++tree_revisions.any;
    ++tree_revisions.shape;
}

struct LObject::Implementation {
    std::string name;
    std::uint32_t name_hash = 0;
    Kind kind = Kind::Object;
    LObject* parent = nullptr;
    std::uint64_t version = 0;
    std::vector<std::unique_ptr<LObject>> children;
    NameIndex index; ///< of `children`, by name and kind
    Signal destroyed;
};

/// A link to another attribute. While resolved, `target` lists this attribute at `slot` of its
/// dependents.
struct AttributeLink {
    std::string path;
    LAttribute* target = nullptr;
    std::size_t slot = 0;
    bool cyclic = false;
};

/// A state variant that counts for an attribute, its own or an inherited one.
struct StateVariant {
    LAttribute* attribute = nullptr;
    std::vector<std::string_view> states; ///< views into the variant's name
};

struct LAttribute::Implementation {
    std::vector<LAttribute*> dependents; ///< in order of linking; null where one has left
    std::size_t departed = 0;            ///< how many of `dependents` are null
    std::uint64_t dependents_version = 0;
    std::unique_ptr<AttributeLink> link;
    AttributeValue value;
    Signal value_changed;
    Signal link_changed;
    std::uint64_t inherited_in_load = 0;    ///< the load in which it got all variants of its bases
    std::vector<StateVariant> state_cache;  ///< most names first, then by name
    std::uint64_t state_cache_revision = 0; ///< shape revision that the cache was built for
};

struct LLayer::Implementation {
    LLayer* base = nullptr;
    std::string base_path;
};

/// Access to the state of objects. Everything here keeps the indexes and revisions right.
struct Records {
    using ObjectRecord = LObject::Implementation;
    using AttributeRecord = LAttribute::Implementation;
    using LayerRecord = LLayer::Implementation;

    static ObjectRecord& object(const LObject& object) { return *object.object_; }
    static AttributeRecord& of(const LAttribute& attribute) { return *attribute.attribute_; }
    static LayerRecord& of(const LLayer& layer) { return *layer.layer_; }
    static bool& visiting(LLayer& layer) { return layer.visiting; }
    static bool& linked(LLayer& layer) { return layer.linked; }

    /// The child of exactly this kind and name; null if missing.
    static LAttribute* find_attribute(const LObject& parent, std::string_view name,
                                      std::uint32_t hash);
    static LLayer* find_layer(const LObject& parent, std::string_view name, std::uint32_t hash);
    static LAttribute* find_attribute(const LObject& parent, std::string_view name) {
        return find_attribute(parent, name, hash_name(name));
    }
    static LLayer* find_layer(const LObject& parent, std::string_view name) {
        return find_layer(parent, name, hash_name(name));
    }

    /// Rebuilds the index after children changed their places or names.
    static void reindex(LObject& parent);

    /// Puts the child layers of `parent` into the order of `layers`, which lists them all, in the
    /// places that layers have among its children.
    static void reorder_layers(LLayer& parent, const std::vector<LLayer*>& layers);

    /// The state variants in force for an attribute, best first.
    static const std::vector<StateVariant>& state_variants(const LAttribute& attribute);

    /// Joins `attribute` to the dependents of `target`, after leaving its present target. Null
    /// leaves only. The attribute must have a link.
    static void attach(LAttribute& attribute, LAttribute* target);
};

} // namespace Layers
