#pragma once

#include <cstddef>
#include <functional>

namespace Lumenfold::Builder {

/// Calls `work` once for each index below `count`, on as many threads as asked for (0: one for each
/// core). Calls of different indexes may run at once; what they make must not depend on their
/// order.
void for_each_index(std::size_t count, unsigned threads,
                    const std::function<void(std::size_t)>& work);

} // namespace Lumenfold::Builder
