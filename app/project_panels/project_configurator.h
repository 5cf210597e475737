#pragma once

#include "app/context/configurator.h"

namespace Lumenfold {

/// What a project is edited with: the table of its sections.
ConfiguratorParts project_configurator_parts();

} // namespace Lumenfold
