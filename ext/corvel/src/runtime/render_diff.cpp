#include "runtime/render_diff.h"

#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace Corvel {
namespace {

using Children = std::vector<RenderNode>;

RenderNode without_children(const RenderNode& node) {
    RenderNode copy;
    copy.kind = node.kind;
    copy.name = node.name;
    copy.path = node.path;
    copy.text = node.text;
    copy.style = node.style;
    copy.items = node.items;
    copy.selected = node.selected;
    return copy;
}

RenderPatch replace_patch(const RenderNode& node) {
    RenderPatch patch;
    patch.kind = PatchKind::Replace;
    patch.path = node.path;
    std::size_t slash = node.path->rfind('/');
    if (slash != std::string::npos)
        patch.parent_path = node.path->substr(0, slash);
    patch.node = node;
    return patch;
}

bool same_names_in_order(const Children& a, const Children& b) {
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i].name != b[i].name)
            return false;
    }
    return true;
}

void diff_children_by_name(const RenderNode& before, const RenderNode& after, SiblingNames names,
                           std::vector<RenderPatch>& patches) {
    std::unordered_map<std::string_view, const RenderNode*> old_by_name;
    for (const RenderNode& child : before.children)
        old_by_name[*child.name] = &child;
    std::unordered_set<std::string_view> new_names;
    for (const RenderNode& child : after.children)
        new_names.insert(*child.name);

    for (const RenderNode& child : before.children) {
        if (!new_names.contains(*child.name))
            patches.push_back(remove_patch(child.path));
    }
    for (std::size_t i = 0; i < after.children.size(); ++i) {
        auto survivor = old_by_name.find(*after.children[i].name);
        if (survivor != old_by_name.end())
            diff_nodes(*survivor->second, after.children[i], names, patches);
        else
            patches.push_back(add_patch(after, i));
    }
}

} // namespace

void diff_children(const RenderNode& before, const RenderNode& after, SiblingNames names,
                   std::vector<RenderPatch>& patches) {
    if (names == SiblingNames::Distinct && same_names_in_order(before.children, after.children)) {
        for (std::size_t i = 0; i < after.children.size(); ++i)
            diff_nodes(before.children[i], after.children[i], names, patches);
        return;
    }
    if (!before.children.empty() || !after.children.empty())
        diff_children_by_name(before, after, names, patches);
}

RenderPatch update_patch(const RenderNode& node) {
    RenderPatch patch;
    patch.kind = PatchKind::Update;
    patch.path = node.path;
    patch.node = without_children(node);
    return patch;
}

RenderPatch add_patch(const RenderNode& parent, std::size_t index) {
    const RenderNode& child = parent.children[index];
    RenderPatch patch;
    patch.kind = PatchKind::Add;
    patch.path = child.path;
    patch.parent_path = parent.path;
    patch.index = static_cast<std::int64_t>(index);
    patch.node = child;
    return patch;
}

RenderPatch remove_patch(const SharedText& path) {
    RenderPatch patch;
    patch.kind = PatchKind::Remove;
    patch.path = path;
    return patch;
}

bool nodes_equal(const RenderNode& a, const RenderNode& b) {
    return a.text == b.text && a.style == b.style && a.items == b.items && a.selected == b.selected;
}

void diff_nodes(const RenderNode& before, const RenderNode& after, SiblingNames names,
                std::vector<RenderPatch>& patches) {
    if (before.kind != after.kind) {
        patches.push_back(replace_patch(after));
        return;
    }
    if (!nodes_equal(before, after))
        patches.push_back(update_patch(after));
    diff_children(before, after, names, patches);
}

} // namespace Corvel
