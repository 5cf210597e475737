// Reads any bytes as an animated SVG document and plays it. Each frame must be the source with the
// edits that the plain comparison makes, and nothing else.

#include "svg/frame_by_edits.h"
#include "svg/svg_animation.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string source(reinterpret_cast<const char*>(data), size);
    const Corvel::SvgAnimation animation(source);
    for (const double ms : {0.0, 250.0, 999.5, 1e7, -1.0})
        if (animation.frame_at(ms) != frame_by_edits(source, ms))
            std::abort();
    return 0;
}
