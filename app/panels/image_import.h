#pragma once

#include "app/shell.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace Lumenfold {

/// The name filter of logos and icons.
inline const std::string IMAGE_FILTER = "Images (*.svg *.png *.jpg *.jpeg *.webp *.gif)";

/// An image in the site's folder "images".
struct ImportedImage {
    std::string path;      ///< the file
    std::string reference; ///< "/images/" and the file name, as configurations refer to it
    std::string file_name;
};

/// The folder that image references of the active configuration start from: the site's, for a
/// project the one above it. Empty while nothing is open.
std::filesystem::path image_root(const AppContext& context);

/// Copies an image into `<root>/images`, unless it is that very file, over a file of its name.
/// Nothing on any failure.
std::optional<ImportedImage> import_image(const std::filesystem::path& root,
                                          const std::filesystem::path& source);

/// Asks for an image, starting in the site's images. `chosen` runs with the file picked, and not
/// at all when the user cancels or another configuration came up meanwhile.
void pick_image(const Context& context, const std::string& title, const std::string& filter,
                std::function<void(const std::filesystem::path& file)> chosen);

/// Asks for an icon and copies it into the site's images; `chosen` runs only on success.
void pick_icon(const Context& context, const std::string& title,
               std::function<void(const ImportedImage& image)> chosen);

} // namespace Lumenfold
