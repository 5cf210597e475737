#include "svg/css_scanner.h"

#include <algorithm>

namespace Corvel::Svg {
namespace {

constexpr std::size_t NPOS = std::string_view::npos;
constexpr std::string_view SPACES = " \t\n\v\f\r";

bool is_letter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool starts_name(char c) {
    return is_letter(c) || c == '_';
}
bool continues_name(char c) {
    return starts_name(c) || (c >= '0' && c <= '9') || c == '-';
}

std::size_t skip_spaces(std::string_view css, std::size_t at) {
    return std::min(css.find_first_not_of(SPACES, at), css.size());
}

/// Reads the head of a keyframes block at `at`, an "@". Returns the index just past its brace, or
/// `NPOS` if this is none.
std::size_t scan_head(std::string_view css, std::size_t at, std::string_view& name) {
    constexpr std::string_view vendor = "-webkit-";
    constexpr std::string_view keyword = "keyframes";
    ++at;
    if (css.substr(at, vendor.size()) == vendor)
        at += vendor.size();
    if (css.substr(at, keyword.size()) != keyword)
        return NPOS;
    at += keyword.size();
    const std::size_t start = skip_spaces(css, at);
    if (start == at || start == css.size() || !starts_name(css[start]))
        return NPOS;
    std::size_t end = start + 1;
    while (end < css.size() && continues_name(css[end]))
        ++end;
    name = css.substr(start, end - start);
    const std::size_t brace = skip_spaces(css, end);
    return brace < css.size() && css[brace] == '{' ? brace + 1 : NPOS;
}

/// Finds the closing brace of each block in one pass over all braces; `NPOS` where there is none.
void close_blocks(std::string_view css, std::vector<CssKeyframes>& blocks) {
    std::vector<CssKeyframes*> open; // null for a block that is no keyframes block
    auto next = blocks.begin();
    for (std::size_t at = css.find_first_of("{}"); at != NPOS;
         at = css.find_first_of("{}", at + 1)) {
        if (css[at] == '{') {
            const bool is_block = next != blocks.end() && next->body_begin == at + 1;
            open.push_back(is_block ? &*next++ : nullptr);
        } else if (!open.empty()) {
            if (open.back())
                open.back()->body_end = at;
            open.pop_back();
        }
    }
}

} // namespace

std::vector<CssRule> scan_rules(std::string_view css) {
    std::vector<CssRule> rules;
    std::size_t start = 0; // where the text behind the last brace begins
    std::size_t brace = css.find_first_of("{}");
    while (brace != NPOS) {
        const std::size_t next = css.find_first_of("{}", brace + 1);
        if (next == NPOS)
            break;
        if (css[brace] == '{' && css[next] == '}' && brace > start)
            rules.push_back({css.substr(start, brace - start),
                             css.substr(brace + 1, next - brace - 1), start, next + 1});
        start = brace + 1;
        brace = next;
    }
    return rules;
}

std::vector<CssKeyframes> scan_keyframes(std::string_view css) {
    std::vector<CssKeyframes> blocks;
    for (std::size_t at = css.find('@'); at != NPOS;) {
        std::string_view name;
        const std::size_t body = scan_head(css, at, name);
        if (body != NPOS)
            blocks.push_back({name, at, body, NPOS});
        at = css.find('@', body == NPOS ? at + 1 : body);
    }
    close_blocks(css, blocks);
    std::erase_if(blocks, [](const CssKeyframes& block) { return block.body_end == NPOS; });
    return blocks;
}

std::string without_keyframes(std::string_view css, const std::vector<CssKeyframes>& blocks) {
    std::string rest;
    rest.reserve(css.size());
    std::size_t cursor = 0;
    for (const CssKeyframes& block : blocks) {
        if (block.begin < cursor)
            continue; // it lies in a block that is gone
        rest.append(css.substr(cursor, block.begin - cursor));
        cursor = block.body_end + 1;
    }
    rest.append(css.substr(cursor));
    return rest;
}

} // namespace Corvel::Svg
