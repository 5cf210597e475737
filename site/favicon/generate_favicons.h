#pragma once

#include "site/favicon.h"

namespace Lumenfold {

/// Writes five PNG files and "favicon.ico" from the request's image. Needs a QGuiApplication or
/// QApplication. Returns an error text, empty on success; files already written stay.
std::string generate_favicons(const FaviconRequest& request);

} // namespace Lumenfold
