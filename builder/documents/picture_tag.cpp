#include "builder/documents/picture_tag.h"

#include "builder/documents/escape.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace Lumenfold::Builder {
namespace {

constexpr int LARGEST = 100'000;

/// The number that a length begins with, and what stands behind it ("px", "%").
int length_of(std::string_view text, std::string_view& unit) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    unit = text.substr(static_cast<std::size_t>(end - text.data()));
    return error == std::errc() ? std::clamp(value, 0, LARGEST) : 0;
}

int pixels_of(std::string_view text) {
    std::string_view unit;
    const int value = length_of(text, unit);
    return unit.empty() || unit == "px" ? value : 0;
}

int percent_of(std::string_view text) {
    std::string_view unit;
    const int value = length_of(text, unit);
    return unit.starts_with('%') ? std::clamp((value + 5) / 10 * 10, 10, 100) : 0;
}

int scaled(int length, int from, int to) {
    return static_cast<int>((static_cast<long long>(length) * to + from / 2) / from);
}

struct Size {
    int width;
    int height;
};

Size shown_size(const ImageText& image, const ImageTarget& target) {
    const Size natural{target.width, target.height};
    const bool known = natural.width > 0 && natural.height > 0;
    Size shown{pixels_of(image.width), pixels_of(image.height)};
    if (shown.width == 0 && shown.height == 0)
        return known ? natural : Size{0, 0};
    if (known && shown.height == 0)
        shown.height = scaled(shown.width, natural.width, natural.height);
    else if (known && shown.width == 0)
        shown.width = scaled(shown.height, natural.height, natural.width);
    return shown;
}

void append_number(std::string& html, std::string_view name, int value) {
    if (value > 0)
        html.append(" ").append(name).append("=\"").append(std::to_string(value)).append("\"");
}

void append_classes(std::string& html, const ImageText& image) {
    std::string classes;
    if (image.align == "left" || image.align == "right")
        classes.append("align-").append(image.align);
    if (const int percent = percent_of(image.width))
        classes.append(classes.empty() ? "" : " ").append("width-" + std::to_string(percent));
    if (!classes.empty())
        html += " class=\"" + classes + "\"";
}

} // namespace

void append_picture_tag(std::string& html, const ImageText& image, const ImageTarget& target) {
    html += "<img src=\"";
    append_url(html, target.src);
    html += "\" alt=\"";
    append_attribute(html, image.alt);
    if (!image.title.empty()) {
        html += "\" title=\"";
        append_attribute(html, image.title);
    }
    html += '"';
    append_classes(html, image);
    const Size size = shown_size(image, target);
    append_number(html, "width", size.width);
    append_number(html, "height", size.height);
    html += " loading=\"lazy\" decoding=\"async\">";
}

} // namespace Lumenfold::Builder
