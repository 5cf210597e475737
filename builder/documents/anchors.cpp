#include "builder/documents/anchors.h"

#include <algorithm>
#include <utf8proc.h>

namespace Lumenfold::Builder {
namespace {

bool is_word_character(utf8proc_int32_t point) {
    switch (utf8proc_category(point)) {
    case UTF8PROC_CATEGORY_LU:
    case UTF8PROC_CATEGORY_LL:
    case UTF8PROC_CATEGORY_LT:
    case UTF8PROC_CATEGORY_LM:
    case UTF8PROC_CATEGORY_LO:
    case UTF8PROC_CATEGORY_MN:
    case UTF8PROC_CATEGORY_MC:
    case UTF8PROC_CATEGORY_ME:
    case UTF8PROC_CATEGORY_ND:
    case UTF8PROC_CATEGORY_NL:
    case UTF8PROC_CATEGORY_PC:
        return true;
    default:
        return false;
    }
}

void append_wide(std::string& slug, utf8proc_int32_t point) {
    if (!is_word_character(point))
        return;
    utf8proc_uint8_t bytes[4];
    const utf8proc_ssize_t length = utf8proc_encode_char(utf8proc_tolower(point), bytes);
    slug.append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length));
}

void append_ascii(std::string& slug, char c) {
    if (c >= 'A' && c <= 'Z')
        slug += static_cast<char>(c - 'A' + 'a');
    else if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '_')
        slug += c;
    else if (c == ' ' || c == '\n' || c == '\t')
        slug += '-';
}

/// Steps from one word to the other (insert, remove, replace), at most `limit` + 1.
std::size_t distance(std::string_view a, std::string_view b, std::size_t limit) {
    if (a.size() > b.size())
        std::swap(a, b);
    if (b.size() - a.size() > limit)
        return limit + 1;
    std::vector<std::size_t> row(a.size() + 1);
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
        std::size_t corner = row[0];
        row[0] = j;
        for (std::size_t i = 1; i <= a.size(); ++i) {
            const std::size_t replaced = corner + (a[i - 1] == b[j - 1] ? 0 : 1);
            corner = row[i];
            row[i] = std::min({replaced, row[i] + 1, row[i - 1] + 1});
        }
    }
    return row[a.size()];
}

std::string folded(std::string_view word) {
    std::string folded;
    for (const char c : word)
        if (c != '-' && c != '_' && c != ' ')
            folded += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return folded;
}

/// A list this long is not searched: its words would be told in another way.
constexpr std::size_t MOST_CANDIDATES = 2000;
constexpr std::size_t LONGEST_WORD = 100;

} // namespace

std::string heading_slug(std::string_view text) {
    std::string slug;
    slug.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        if (static_cast<unsigned char>(text[at]) < 0x80) {
            append_ascii(slug, text[at++]);
            continue;
        }
        utf8proc_int32_t point = 0;
        const utf8proc_ssize_t length =
            utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()) + at,
                             static_cast<utf8proc_ssize_t>(text.size() - at), &point);
        if (length > 0)
            append_wide(slug, point);
        at += length > 0 ? static_cast<std::size_t>(length) : 1;
    }
    return slug.find_first_not_of('-') == std::string::npos ? "section" : slug;
}

const std::string& Anchors::add_heading(std::string_view text) {
    const std::string slug = heading_slug(text);
    std::size_t* const repeats = repeats_.contains(slug) ? &repeats_[slug] : nullptr;
    std::string id = slug;
    while (!add(id))
        id = slug + "-" + std::to_string(++*repeats);
    return order_.back();
}

bool Anchors::add(std::string_view id) {
    if (id.empty() || id.find_first_of(" \t\n\r\f") != std::string_view::npos)
        return false;
    if (!repeats_.try_emplace(std::string(id), 0).second)
        return false;
    order_.emplace_back(id);
    return true;
}

bool Anchors::contains(std::string_view id) const {
    return repeats_.contains(std::string(id));
}

std::string_view nearest(std::string_view word, const std::vector<std::string>& candidates) {
    if (candidates.size() > MOST_CANDIDATES || word.size() > LONGEST_WORD)
        return {};
    const std::string wanted = folded(word);
    std::size_t best = wanted.size() / 3 + 1;
    std::string_view found;
    for (const std::string& candidate : candidates) {
        if (candidate.size() > LONGEST_WORD)
            continue;
        const std::size_t steps = distance(wanted, folded(candidate), best);
        if (steps < best || (steps == best && found.empty() && steps < wanted.size())) {
            best = steps;
            found = candidate;
        }
    }
    return found;
}

std::string missing_anchor(std::string_view anchor, std::string_view place,
                           const std::vector<std::string>& anchors) {
    std::string text = "no heading \"#" + std::string(anchor) + "\" in " + std::string(place);
    const std::string_view near = nearest(anchor, anchors);
    return near.empty() ? text + "; correct the link, or leave the anchor out"
                        : text + "; did you mean \"#" + std::string(near) + "\"?";
}

} // namespace Lumenfold::Builder
