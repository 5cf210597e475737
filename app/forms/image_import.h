#pragma once

#include "app/context/context.h"

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

/// Copies an image into the images of the active configuration's site, unless it is that very file,
/// over a file of its name, which is shown anew. A failure is told.
std::optional<ImportedImage> import_image(const Context& context,
                                          const std::filesystem::path& source);

/// The file that was chosen as icon of a new record; empty for none.
using PickedIcon = std::filesystem::path;

/// Copies an icon into the site's images for a record that is now made, beside a file of its name
/// with another content. `reference` is what the record is to hold. False if that failed, which is
/// told.
bool import_icon(const Context& context, const PickedIcon& icon, std::string& reference);

/// Asks for an image, starting in the site's images. `chosen` runs with the file picked, and not
/// at all when the user cancels or another configuration came up meanwhile.
void pick_image(const Context& context, const std::string& title, const std::string& filter,
                std::function<void(const std::filesystem::path& file)> chosen);

} // namespace Lumenfold
