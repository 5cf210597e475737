#pragma once

namespace Layers {

class LLayer;
class LoadLimits;

/// Composes inheritance for `layer` and all layers below: copies into each what its base has and
/// it lacks, bases first. Layers linked before are left alone. A loop of bases is cut. What goes
/// beyond the limits is left out.
void link_layer(LLayer& layer, LoadLimits& limits);

} // namespace Layers
