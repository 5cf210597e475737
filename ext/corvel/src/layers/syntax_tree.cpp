#include "layers/syntax_tree.h"

namespace Layers {

std::string reference_text(const ReferenceNode& reference) {
    std::string text;
    for (const std::string_view entry : reference.traversal) {
        text += entry;
        text += '/';
    }
    if (!reference.group.empty()) {
        text += reference.group;
        text += '.';
    }
    text += reference.name;
    return text;
}

} // namespace Layers
