#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

struct GumboInternalNode;

namespace Lumenfold::Builder {

/// A piece of HTML read as browsers do as a tree. Its nodes live as long as it does and
/// lead into the text, which must stay.
class HtmlTree {
public:
    /// Parses `html` as the content of a body.
    explicit HtmlTree(std::string_view html);
    ~HtmlTree();
    HtmlTree(const HtmlTree&) = delete;
    HtmlTree& operator=(const HtmlTree&) = delete;

    /// The element whose children are the piece's.
    const GumboInternalNode* root() const { return root_; }
    /// The text directly below the root.
    std::string plain_text() const;

private:
    struct Arena;
    std::unique_ptr<Arena> arena_;
    const GumboInternalNode* root_ = nullptr;
};

} // namespace Lumenfold::Builder
