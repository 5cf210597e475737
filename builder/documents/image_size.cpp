#include "builder/documents/image_size.h"

#include "builder/documents/svg_size.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace Lumenfold::Builder {
namespace {

constexpr std::uint32_t LARGEST = 1'000'000;

/// Reads numbers; zeros behind the end.
class Bytes {
public:
    explicit Bytes(std::string_view bytes)
        : bytes_(bytes) {}

    std::uint32_t at(std::size_t i) const {
        return i < bytes_.size() ? static_cast<unsigned char>(bytes_[i]) : 0;
    }
    std::uint32_t big16(std::size_t i) const { return at(i) << 8 | at(i + 1); }
    std::uint32_t big32(std::size_t i) const { return big16(i) << 16 | big16(i + 2); }
    std::uint32_t little16(std::size_t i) const { return at(i) | at(i + 1) << 8; }
    std::uint32_t little24(std::size_t i) const { return little16(i) | at(i + 2) << 16; }
    bool has(std::size_t i, std::string_view text) const {
        return i <= bytes_.size() && bytes_.substr(i).starts_with(text);
    }
    std::size_t size() const { return bytes_.size(); }
    std::string_view text() const { return bytes_; }

private:
    std::string_view bytes_;
};

ImageSize size_of(std::uint32_t width, std::uint32_t height) {
    if (width > LARGEST || height > LARGEST)
        return {};
    return {static_cast<int>(width), static_cast<int>(height)};
}

ImageSize png_size(const Bytes& bytes) {
    return size_of(bytes.big32(16), bytes.big32(20));
}

ImageSize gif_size(const Bytes& bytes) {
    return size_of(bytes.little16(6), bytes.little16(8));
}

/// Walks the segments up to the frame's header, SOF0 to SOF15 without DHT, JPG and DAC.
ImageSize jpeg_size(const Bytes& bytes) {
    std::size_t at = 2;
    while (at + 9 < bytes.size() && bytes.at(at) == 0xFF) {
        const std::uint32_t marker = bytes.at(at + 1);
        const bool frame =
            marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (frame)
            return size_of(bytes.big16(at + 7), bytes.big16(at + 5));
        at += marker == 0xFF ? 1 : 2 + std::max<std::uint32_t>(bytes.big16(at + 2), 2);
    }
    return {};
}

ImageSize webp_size(const Bytes& bytes) {
    if (bytes.has(12, "VP8X"))
        return size_of(bytes.little24(24) + 1, bytes.little24(27) + 1);
    if (bytes.has(12, "VP8L")) {
        const std::uint32_t bits = bytes.little16(21) | bytes.little16(23) << 16;
        return size_of((bits & 0x3FFF) + 1, (bits >> 14 & 0x3FFF) + 1);
    }
    return size_of(bytes.little16(26) & 0x3FFF, bytes.little16(28) & 0x3FFF);
}

/// The largest of the image properties: the picture itself beside its thumbnails and tiles.
ImageSize avif_size(const Bytes& bytes) {
    constexpr std::string_view property = "ispe";
    constexpr std::size_t header = 64 * 1024;
    ImageSize largest;
    const std::string_view text = bytes.text().substr(0, header);
    for (std::size_t at = 0; (at = text.find(property, at)) != std::string_view::npos; ++at) {
        const ImageSize size = size_of(bytes.big32(at + 8), bytes.big32(at + 12));
        if (size.width > largest.width)
            largest = size;
    }
    return largest;
}

struct Format {
    std::size_t place;
    std::string_view sign;
    ImageSize (*size)(const Bytes& bytes);
};

constexpr Format FORMATS[] = {
    {0, "\x89PNG\r\n\x1A\n", png_size},
    {0, "\xFF\xD8\xFF", jpeg_size},
    {0, "GIF87a", gif_size},
    {0, "GIF89a", gif_size},
    {8, "WEBPVP8", webp_size},
    {4, "ftypavif", avif_size},
    {4, "ftypavis", avif_size},
    {4, "ftypmif1", avif_size},
};

} // namespace

std::optional<ImageSize> image_size(std::string_view bytes) {
    const Bytes reader(bytes);
    for (const Format& format : FORMATS)
        if (reader.has(format.place, format.sign))
            return format.size(reader);
    return svg_size(bytes);
}

} // namespace Lumenfold::Builder
