#pragma once

#include "app/context/configurator.h"

namespace Lumenfold {

/// What a site is edited with: the table of its sections.
ConfiguratorParts site_configurator_parts();

} // namespace Lumenfold
