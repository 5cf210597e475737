#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// In stored HTML the way to the site's root is not known yet, since a page stands at more than one
/// address: this character stands for it ("", "../", "../../") at the beginning of an address. It
/// never comes from a document, for control characters are taken out of those.
inline constexpr char ROOT_MARK = '\x01';

/// Where a link of a document leads.
struct LinkTarget {
    std::string href;      ///< as it stands in the page; empty: the words stay, without a link
    bool external = false; ///< leaves the site
    std::string problem;   ///< what is wrong and what to do; empty if nothing is
};

/// What a document's picture becomes.
struct ImageTarget {
    std::string src; ///< as it stands in the page; empty: a link or words in its place
    int width = 0;   ///< natural size in pixels, 0 if unknown: a page keeps its room
    int height = 0;
    std::string link; ///< with an empty `src`: the picture's own address for a link; may be empty
    bool advanced =
        false;           ///< the problem is worth an advanced line only (a picture from elsewhere)
    std::string problem; ///< what is wrong and what to do; empty if nothing is
};

/// Decides what the addresses of one document mean. Addresses arrive as the author wrote them,
/// with entities resolved and escapes taken away; `line` is where they stand, for messages that can
/// only be told later. The renderer tells a target's `problem` itself.
class LinkResolver {
public:
    virtual ~LinkResolver() = default;
    virtual LinkTarget link(std::string_view address, std::size_t line) = 0;
    virtual ImageTarget image(std::string_view address, std::size_t line) = 0;
};

} // namespace Lumenfold::Builder
