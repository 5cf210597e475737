#pragma once

#include "layers/object_model.h"

#include <string>
#include <vector>

namespace Layers {

/// The nearest layer around an object; null if none.
LLayer* enclosing_layer(const LObject& object);

/// The layer two steps below the root on the way to `layer` - a window below the application's
/// layer - or `layer` itself where it is nearer to the root. Paths are looked up from it first.
const LLayer& top_layer(const LLayer& layer);

/// The end of the chain of parents.
const LLayer& root_layer(const LLayer& layer);

/// Names from the root, which has none, joined by "/"; a state variant follows its attribute
/// behind a ".".
std::string full_path(const LObject& object);

/// Appends the child layers in reverse, so that the last of `stack` is the first child.
void push_child_layers(std::vector<LLayer*>& stack, const LLayer& layer);

} // namespace Layers
