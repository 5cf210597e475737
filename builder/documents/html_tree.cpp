#include "builder/documents/html_tree.h"

#include <algorithm>
#include <gumbo.h>
#include <utility>
#include <vector>

namespace Lumenfold::Builder {

/// All of a tree's memory. The parser's own way of giving a tree back is recursive and would run
/// out of stack on a deep one; a tree is given back as a whole here.
struct HtmlTree::Arena {
    static constexpr std::size_t CHUNK = 64 * 1024;
    static constexpr std::size_t ALIGNMENT = alignof(std::max_align_t);

    void* take(std::size_t size) {
        size = (std::max<std::size_t>(size, 1) + ALIGNMENT - 1) / ALIGNMENT * ALIGNMENT;
        if (size > left) {
            left = std::max(size, chunks.empty() ? CHUNK / 8 : CHUNK);
            chunks.push_back(std::make_unique_for_overwrite<std::max_align_t[]>(
                left / sizeof(std::max_align_t) + 1));
            next = reinterpret_cast<char*>(chunks.back().get());
        }
        left -= size;
        return std::exchange(next, next + size);
    }

    std::vector<std::unique_ptr<std::max_align_t[]>> chunks;
    char* next = nullptr;
    std::size_t left = 0;
};

HtmlTree::HtmlTree(std::string_view html)
    : arena_(std::make_unique<Arena>()) {
    GumboOptions options = kGumboDefaultOptions;
    options.allocator = [](void* arena, std::size_t size) {
        return static_cast<Arena*>(arena)->take(size);
    };
    options.deallocator = [](void*, void*) {};
    options.userdata = arena_.get();
    options.fragment_context = GUMBO_TAG_BODY;
    options.max_errors = 0;
    root_ = gumbo_parse_with_options(&options, html.data(), html.size())->root;
}

HtmlTree::~HtmlTree() = default;

std::string HtmlTree::plain_text() const {
    std::string text;
    const GumboVector& children = root_->v.element.children;
    for (unsigned int i = 0; i < children.length; ++i) {
        const auto* const node = static_cast<const GumboNode*>(children.data[i]);
        if (node->type == GUMBO_NODE_TEXT || node->type == GUMBO_NODE_WHITESPACE)
            text += node->v.text.text;
    }
    return text;
}

} // namespace Lumenfold::Builder
