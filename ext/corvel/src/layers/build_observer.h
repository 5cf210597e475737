#pragma once

#include "layers/syntax_tree.h"

#include <cstdint>
#include <string>

namespace Layers {

class LAttribute;
class LLayer;

/// Hears what each declaration of a file makes of the tree, as the file is poured.
class BuildObserver {
public:
    virtual ~BuildObserver() = default;

    /// The declarations of a file follow.
    virtual void on_file(const std::string& path) = 0;
    /// A layer was declared by `node`, or passed through on the path of a declaration (null).
    virtual void on_layer(LLayer& layer, const LayerNode* node, std::uint64_t line) = 0;
    /// A value was given to an attribute, or to a state variant, which is its child.
    virtual void on_value(LAttribute& assigned, const ValueNode& value, std::uint64_t line) = 0;
};

} // namespace Layers
