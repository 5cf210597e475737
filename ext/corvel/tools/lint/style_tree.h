#pragma once

#include "findings.h"
#include "layers/build_observer.h"
#include "layers/engine.h"
#include "options.h"

#include <functional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace CorvelLint {

/// A layer as a file declares it.
struct DeclaredLayer {
    Layers::LLayer* layer;
    Place place;
    std::string base;      ///< the reference behind "<<"; empty if none
    std::size_t directory; ///< counts the folders in the order of loading
};

/// The styles as the program loads them, and where each object of the tree is written.
class StyleTree final : private Layers::BuildObserver {
public:
    explicit StyleTree(const Options& options);

    Layers::LLayer& root() const { return engine_.root(); }
    /// All declarations of layers, those that a path only passes through included.
    const std::vector<DeclaredLayer>& declared_layers() const { return declared_layers_; }
    /// Attributes and state variants that a file gives a colour literal.
    const std::unordered_set<const Layers::LAttribute*>& color_literals() const { return colors_; }
    /// What the engine said while it loaded.
    const std::vector<std::string>& log() const { return log_; }

    /// Where an object is declared; for one that came by inheritance, where the nearest declared
    /// object around it is.
    Place place_of(const Layers::LObject& object) const;
    /// Whether a file declares the object itself.
    bool is_declared(const Layers::LObject& object) const { return places_.contains(&object); }

    using LayerVisit = std::function<void(Layers::LLayer& layer)>;
    using AttributeVisit = std::function<void(Layers::LAttribute& attribute)>;
    /// Visits all layers below the root, outer ones first.
    void for_each_layer(const LayerVisit& visit) const;
    /// Visits all attributes and their state variants.
    void for_each_attribute(const AttributeVisit& visit) const;
    /// Visits the attribute `name` of a layer and its state variants, if there is one.
    static void for_each_variant(const Layers::LLayer& layer, const std::string& name,
                                 const AttributeVisit& visit);

private:
    void load(const std::filesystem::path& folder, const std::string& layer);
    void on_file(const std::string& path) override { file_ = path; }
    void on_layer(Layers::LLayer& layer, const Layers::LayerNode* node,
                  std::uint64_t line) override;
    void on_value(Layers::LAttribute& assigned, const Layers::ValueNode& value,
                  std::uint64_t line) override;

    Layers::LayersEngine engine_;
    std::vector<DeclaredLayer> declared_layers_;
    std::unordered_set<const Layers::LAttribute*> colors_;
    std::vector<std::string> log_;
    std::unordered_map<const Layers::LObject*, Place> places_;
    std::string file_;
    std::size_t directory_ = 0;
};

/// The layer around an attribute or a state variant.
Layers::LLayer& layer_of(const Layers::LAttribute& attribute);

/// The attribute itself, or the one that a state variant belongs to.
const Layers::LAttribute& owner_of(const Layers::LAttribute& attribute);

/// Whether a layer is no node of its own: it inherits from "Detail".
bool describes_its_parent(const Layers::LLayer& layer);

/// The path of a layer from the root.
std::string path_of(const Layers::LObject& object);

/// The names of the child layers, or of the attributes, of a layer.
std::vector<std::string> layer_names(const Layers::LLayer& layer);
std::vector<std::string> attribute_names(const Layers::LLayer& layer);

} // namespace CorvelLint
