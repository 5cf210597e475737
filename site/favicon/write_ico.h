#pragma once

#include <vector>

class QImage;
class QString;

namespace Lumenfold {

/// Writes square images as an icon file of PNG-compressed entries (the ICO format of Windows
/// Vista and later). False if the file cannot be written whole.
bool write_ico(const QString& path, const std::vector<QImage>& images);

} // namespace Lumenfold
