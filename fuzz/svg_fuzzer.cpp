// Reads any bytes as an animated SVG document and plays it. A frame depends on nothing but document
// and time.

#include "svg/svg_animation.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string source(reinterpret_cast<const char*>(data), size);
    const Corvel::SvgAnimation animation(source);
    const std::string frame = animation.frame_at(250);
    for (const double ms : {0.0, 999.5, 1e7, -1.0})
        animation.frame_at(ms);
    if (Corvel::SvgAnimation(source).frame_at(250) != frame)
        std::abort();
    return 0;
}
