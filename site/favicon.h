#pragma once

#include <functional>
#include <string>

namespace Lumenfold {

/// One set of icon files to make from one image.
struct FaviconRequest {
    std::string source;     ///< path of the image, SVG or raster
    std::string output_dir; ///< folder to write into
    std::string background; ///< a colour; empty for white
};

/// Makes the files and returns an error text, empty on success.
using FaviconGenerator = std::function<std::string(const FaviconRequest&)>;

/// The generator that the program's entry registered; empty in a build without image facilities.
FaviconGenerator& favicon_generator();

} // namespace Lumenfold
