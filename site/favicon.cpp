#include "site/favicon.h"

namespace Lumenfold {

FaviconGenerator& favicon_generator() {
    static FaviconGenerator generator;
    return generator;
}

} // namespace Lumenfold
