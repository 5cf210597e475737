// Recolours any bytes as an SVG document. The first line is the tint.

#include "desktop/media/svg_tint.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view source(reinterpret_cast<const char*>(data), size);
    const std::size_t end = std::min(source.find('\n'), source.size());
    const std::string tint(source.substr(0, end));
    const QByteArray once = Corvel::recolor_svg(source.substr(end), tint);
    Corvel::recolor_svg(std::string_view(once.data(), std::size_t(once.size())), tint);
    return 0;
}
