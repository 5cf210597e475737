#include "builder/serve/content_type.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Lumenfold::Builder {

namespace {

constexpr std::array<std::pair<std::string_view, std::string_view>, 27> TYPES{{
    {"html", "text/html; charset=utf-8"},
    {"css", "text/css; charset=utf-8"},
    {"js", "text/javascript; charset=utf-8"},
    {"json", "application/json"},
    {"xml", "application/xml; charset=utf-8"},
    {"txt", "text/plain; charset=utf-8"},
    {"md", "text/markdown; charset=utf-8"},
    {"svg", "image/svg+xml"},
    {"png", "image/png"},
    {"jpg", "image/jpeg"},
    {"jpeg", "image/jpeg"},
    {"gif", "image/gif"},
    {"webp", "image/webp"},
    {"avif", "image/avif"},
    {"ico", "image/x-icon"},
    {"woff", "font/woff"},
    {"woff2", "font/woff2"},
    {"ttf", "font/ttf"},
    {"otf", "font/otf"},
    {"mp4", "video/mp4"},
    {"webm", "video/webm"},
    {"mp3", "audio/mpeg"},
    {"ogg", "audio/ogg"},
    {"pdf", "application/pdf"},
    {"zip", "application/zip"},
    {"gz", "application/gzip"},
    {"wasm", "application/wasm"},
}};

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

} // namespace

std::string content_type(std::string_view path) {
    const std::size_t dot = path.rfind('.');
    std::string ending(dot == std::string_view::npos ? "" : path.substr(dot + 1));
    std::transform(ending.begin(), ending.end(), ending.begin(), lower);
    const auto* const found = std::find_if(TYPES.begin(), TYPES.end(),
                                           [&](const auto& type) { return type.first == ending; });
    return std::string(found == TYPES.end() ? "application/octet-stream" : found->second);
}

} // namespace Lumenfold::Builder
