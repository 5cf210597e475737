#include "builder/documents/svg_size.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>

namespace Lumenfold::Builder {
namespace {

constexpr std::string_view BLANKS = " \t\r\n";
constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";
constexpr double LARGEST = 1'000'000;

/// Cuts what stands before the root element: declarations, comments, a document type.
std::string_view root_element(std::string_view text) {
    if (text.starts_with(BYTE_ORDER_MARK))
        text.remove_prefix(BYTE_ORDER_MARK.size());
    while (true) {
        text.remove_prefix(std::min(text.find_first_not_of(BLANKS), text.size()));
        std::string_view end;
        if (text.starts_with("<!--"))
            end = "-->";
        else if (text.starts_with("<?"))
            end = "?>";
        else if (text.starts_with("<!"))
            end = text.substr(0, text.find('>')).find('[') < text.size() ? "]>" : ">";
        else
            return text;
        const std::size_t found = text.find(end);
        text.remove_prefix(found == std::string_view::npos ? text.size() : found + end.size());
    }
}

/// The value of an attribute in the text of a start tag.
std::string_view attribute(std::string_view tag, std::string_view name) {
    for (std::size_t at = 0; (at = tag.find(name, at)) != std::string_view::npos; ++at) {
        std::size_t next = at + name.size();
        const bool begins = at > 0 && BLANKS.find(tag[at - 1]) != std::string_view::npos;
        next = std::min(tag.find_first_not_of(BLANKS, next), tag.size());
        if (!begins || next == tag.size() || tag[next] != '=')
            continue;
        next = std::min(tag.find_first_not_of(BLANKS, next + 1), tag.size());
        if (next == tag.size() || (tag[next] != '"' && tag[next] != '\''))
            continue;
        const std::size_t end = tag.find(tag[next], next + 1);
        return tag.substr(next + 1, std::min(end, tag.size()) - next - 1);
    }
    return {};
}

/// Takes a number off the beginning; 0 if there is none.
double take_number(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n,"), text.size()));
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return error == std::errc() && std::isfinite(value) && value > 0 && value < LARGEST ? value : 0;
}

double pixels(std::string_view length) {
    const double value = take_number(length);
    return length.empty() || length == "px" ? value : 0;
}

} // namespace

std::optional<ImageSize> svg_size(std::string_view text) {
    const std::string_view root = root_element(text);
    if (!root.starts_with("<svg") || root.size() < 5 ||
        (BLANKS.find(root[4]) == std::string_view::npos && root[4] != '>' && root[4] != '/'))
        return std::nullopt;
    const std::string_view tag = root.substr(0, root.find('>'));
    double width = pixels(attribute(tag, "width"));
    double height = pixels(attribute(tag, "height"));
    if (width == 0 || height == 0) {
        std::string_view box = attribute(tag, "viewBox");
        take_number(box);
        take_number(box);
        const double box_width = take_number(box);
        const double box_height = take_number(box);
        const bool known = box_width > 0 && box_height > 0;
        const double scale = !known       ? 0
                             : width > 0  ? width / box_width
                             : height > 0 ? height / box_height
                                          : 1;
        width = box_width * scale;
        height = box_height * scale;
    }
    if (width >= LARGEST || height >= LARGEST)
        return ImageSize{};
    return ImageSize{static_cast<int>(std::lround(width)), static_cast<int>(std::lround(height))};
}

} // namespace Lumenfold::Builder
