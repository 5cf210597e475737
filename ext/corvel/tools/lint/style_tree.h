#pragma once

#include "findings.h"
#include "layers/engine.h"
#include "options.h"
#include "sources.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace CorvelLint {

/// The styles as the program would load them, and where each object of the tree is written.
class StyleTree {
public:
    explicit StyleTree(const Options& options);

    Layers::LLayer& root() const { return engine_.root(); }
    const std::vector<std::unique_ptr<StyleSource>>& sources() const { return sources_; }

    /// Where an object is declared; for one that came by inheritance, where the nearest declared
    /// object around it is.
    Place place_of(const Layers::LObject& object) const;

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
    Layers::LayersEngine engine_;
    std::vector<std::unique_ptr<StyleSource>> sources_;
    std::map<std::string, Place> places_; ///< by path; attributes behind a blank
};

/// The attribute at the end of an attribute's links.
const Layers::LAttribute& terminal_attribute(const Layers::LAttribute& attribute);

} // namespace CorvelLint
