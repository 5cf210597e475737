#include "builder/pages/html_writer.h"

#include "builder/documents/escape.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace Lumenfold::Builder {
namespace {

/// The length of the control character at `at`, 0 if there is none: C0 but tab and line feed, DEL,
/// and C1, which are two bytes.
std::size_t control_length(std::string_view text, std::size_t at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    if ((byte(at) < 0x20 && text[at] != '\t' && text[at] != '\n') || byte(at) == 0x7f)
        return 1;
    return byte(at) == 0xc2 && at + 1 < text.size() && (byte(at + 1) & 0xe0) == 0x80 ? 2 : 0;
}

/// The address as browsers read it: without blanks around it and control characters within.
std::string clean_address(std::string_view address) {
    std::string clean;
    clean.reserve(address.size());
    for (const char c : address)
        if (static_cast<unsigned char>(c) >= 0x20 && c != 0x7f)
            clean += c;
    clean.erase(0, std::min(clean.find_first_not_of(' '), clean.size()));
    clean.erase(clean.find_last_not_of(' ') + 1);
    return clean;
}

bool is_dangerous(std::string_view address) {
    static constexpr std::array<std::string_view, 3> SCHEMES{"javascript:", "data:", "vbscript:"};
    return std::any_of(SCHEMES.begin(), SCHEMES.end(), [&](std::string_view scheme) {
        return address.size() >= scheme.size() &&
               std::equal(scheme.begin(), scheme.end(), address.begin(), [](char a, char b) {
                   return a == std::tolower(static_cast<unsigned char>(b));
               });
    });
}

/// "YYYY-MM-DD"; other words are no value for <time>.
bool is_date(std::string_view text) {
    static constexpr std::string_view FORM = "0000-00-00";
    return text.size() == FORM.size() &&
           std::equal(text.begin(), text.end(), FORM.begin(), [](char a, char b) {
               return b == '0' ? std::isdigit(static_cast<unsigned char>(a)) != 0 : a == b;
           });
}

} // namespace

void append_escaped(std::string& out, std::string_view text) {
    std::size_t begin = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view instead = entity(text[at]);
        const std::size_t length = instead.empty() ? control_length(text, at) : 1;
        if (length > 0) {
            out.append(text, begin, at - begin);
            out += instead;
            begin = at + length;
        }
        at += std::max<std::size_t>(length, 1);
    }
    out.append(text, begin);
}

void append_address(std::string& out, std::string_view address) {
    const bool from_root = address.starts_with(ROOT_MARK);
    const std::string clean = clean_address(address);
    if (from_root)
        out += ROOT_MARK;
    if (!from_root && is_dangerous(clean))
        out += '#';
    else
        for (const char c : clean)
            if (c == ' ')
                out += "%20";
            else
                append_escaped(out, {&c, 1});
}

HtmlWriter& HtmlWriter::attribute(std::string_view name, std::string_view value) {
    raw(" ").raw(name).raw("=\"").text(value);
    return raw("\"");
}

HtmlWriter& HtmlWriter::address(std::string_view name, std::string_view value) {
    raw(" ").raw(name).raw("=\"");
    append_address(out_, value);
    return raw("\"");
}

HtmlWriter& HtmlWriter::element(std::string_view tag, std::string_view css_class,
                                std::string_view text_inside) {
    if (text_inside.empty())
        return *this;
    raw("<").raw(tag);
    if (!css_class.empty())
        attribute("class", css_class);
    raw(">").text(text_inside);
    return raw("</").raw(tag).raw(">");
}

HtmlWriter& HtmlWriter::open_link(const LinkView& link, std::string_view css_class,
                                  std::string_view path) {
    raw(link.href.empty() ? "<span" : "<a");
    if (!css_class.empty())
        attribute("class", css_class);
    if (link.href.empty())
        return *this;
    address("href", link.href);
    if (link.external)
        raw(" target=\"_blank\" rel=\"noopener\"");
    if (link.current || leads_to(link, path))
        raw(" aria-current=\"page\"");
    return *this;
}

HtmlWriter& HtmlWriter::close_link(const LinkView& link) {
    return raw(link.href.empty() ? "</span>" : "</a>");
}

HtmlWriter& HtmlWriter::link(const LinkView& link, std::string_view css_class,
                             std::string_view path) {
    open_link(link, css_class, path).raw(">");
    picture(link.icon, "icon").text(link.label);
    if (!link.note.empty())
        raw(" ").element("span", "note", link.note);
    return close_link(link);
}

HtmlWriter& HtmlWriter::picture(const PictureView& picture, std::string_view css_class) {
    if (picture.src.empty())
        return *this;
    raw("<img").attribute("class", css_class).address("src", picture.src);
    if (picture.width > 0 && picture.height > 0)
        attribute("width", std::to_string(picture.width))
            .attribute("height", std::to_string(picture.height));
    return raw(" alt=\"\">");
}

HtmlWriter& HtmlWriter::date(std::string_view date) {
    if (!is_date(date))
        return text(date);
    return raw("<time").attribute("datetime", date).raw(">").text(date).raw("</time>");
}

LinkView make_link(std::string label, std::string href) {
    LinkView link;
    link.label = std::move(label);
    link.href = std::move(href);
    return link;
}

bool leads_to(const LinkView& link, std::string_view path) {
    return !path.empty() && link.href.size() == path.size() + 1 && link.href[0] == ROOT_MARK &&
           link.href.compare(1, std::string::npos, path) == 0;
}

} // namespace Lumenfold::Builder
