#pragma once

namespace Layers {

class LLayer;

/// Finds the base layer of `layer` and of all layers below, where "<<" names one and none is set:
/// from the top layer, the one below the root's child, first, then from the root. A layer never
/// gets itself, a layer that contains it or one that inherits from it as its base; such a base,
/// and a missing one, stays null without a message.
void resolve_bases(LLayer& layer);

} // namespace Layers
