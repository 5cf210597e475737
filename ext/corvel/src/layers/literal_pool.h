#pragma once

#include "layers/shared_value.h"
#include "layers/syntax_tree.h"

#include <array>

namespace Layers {

/// Gives equal literals that stand near each other one value: a file of styles says 0, 1, 8 and
/// "Row" thousands of times.
class LiteralPool {
public:
    /// A colour becomes the text "#rrggbbaa".
    SharedValue share(const LiteralValue& literal);

private:
    std::array<SharedValue, 256> recent_; ///< by hash
};

} // namespace Layers
