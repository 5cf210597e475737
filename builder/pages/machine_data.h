#pragma once

#include "builder/pages/views.h"

#include <string>

namespace Lumenfold::Builder {

/// What machines are told of a released software: a data block of JSON-LD in schema.org's words.
/// Empty for a page that names no version. Browsers do not run it, so that it holds under a policy
/// that forbids scripts in pages.
std::string software_data(const PageFrame& frame, const ProjectView& project);

} // namespace Lumenfold::Builder
