#pragma once

#include "layers/shared_name.h"

#include <cstdint>

namespace Layers {

/// Where a declaration is written. The file is empty for text that came from none.
struct SourcePlace {
    SharedName file;
    std::uint64_t line = 0; ///< counts from 1
};

} // namespace Layers
