#pragma once

namespace Layers {

class LAttribute;
class LLayer;

/// Finds the base layer of `layer` and of all layers below, where "<<" names one and none is set:
/// from the top layer, the one below the root's child, first, then from the root. A layer never
/// gets itself, a layer that contains it or one that inherits from it as its base; such a base,
/// and a missing one, stays null without a message.
void resolve_bases(LLayer& layer);

/// Composes inheritance for `layer` and all layers below: copies into each what its base has and
/// it lacks, bases first. Layers linked before are left alone. A loop of bases is cut.
void link_layer(LLayer& layer);

/// Resolves the attribute links of `layer` and of all layers below. An unresolved or cyclic link
/// is logged and reads as none.
void link_attributes(LLayer& layer);

/// Resolves the link of one attribute and of its state variants.
void resolve_link(LAttribute& attribute);

} // namespace Layers
