#pragma once

namespace Layers {

class LLayer;

/// Resolves the attribute links of `layer` and of all layers below. An unresolved or cyclic link
/// is logged and reads as none.
void link_attributes(LLayer& layer);

} // namespace Layers
