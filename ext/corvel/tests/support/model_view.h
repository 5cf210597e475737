#pragma once

#include "runtime/render_node.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace TestSupport {

/// A view without widgets. It applies patches to a map of nodes and refuses what a real view could
/// not do: an Add of a known path or under an unknown parent, anything else of an unknown path.
class ModelView {
public:
    struct Node {
        Corvel::RenderNode shown;          ///< without children
        std::string parent_path;           ///< empty for the root
        std::vector<std::string> children; ///< paths in the order on screen
    };
    enum class Order { AsInTree, Any };

    /// Applies the patches. Empty, or words for the first one refused.
    std::string apply(const std::vector<Corvel::RenderPatch>& patches) {
        for (const Corvel::RenderPatch& patch : patches) {
            std::string fault = apply_one(patch);
            if (!fault.empty())
                return fault;
        }
        return {};
    }

    /// Empty, or words for the first difference between the view and one made from `tree` alone.
    std::string mismatch(const Corvel::RenderNode& tree, Order order) const {
        ModelView wanted;
        if (std::string fault = wanted.add(tree, {}, 0); !fault.empty())
            return fault;
        for (const auto& [path, node] : wanted.nodes_)
            if (const auto found = nodes_.find(path); found == nodes_.end())
                return "no node at " + path;
            else if (std::string fault = difference(found->second, node, order); !fault.empty())
                return fault + path;
        return nodes_.size() == wanted.nodes_.size()
                   ? ""
                   : "the view has nodes that are not in the tree";
    }

    const std::map<std::string, Node>& nodes() const { return nodes_; }
    const std::map<std::string, std::string>& pushed_texts() const { return pushed_texts_; }

private:
    std::string apply_one(const Corvel::RenderPatch& patch) {
        const std::string& path = patch.path;
        switch (patch.kind) {
        case Corvel::PatchKind::Add:
            return add(patch.node, patch.parent_path, static_cast<std::size_t>(patch.index));
        case Corvel::PatchKind::Remove:
            return remove(path);
        case Corvel::PatchKind::Update:
            return update(patch);
        case Corvel::PatchKind::Replace: {
            const std::string fault = remove(path);
            return fault.empty() ? add(patch.node, patch.parent_path, 0) : fault;
        }
        case Corvel::PatchKind::SetEditorText:
            pushed_texts_[path] = patch.node.text;
            return {};
        }
        return "a patch of no known kind";
    }

    std::string add(const Corvel::RenderNode& node, const std::string& parent_path,
                    std::size_t index) {
        const std::string& path = node.path;
        if (nodes_.contains(path))
            return "Add of the known path " + path;
        if (!(parent_path.empty() && nodes_.empty())) {
            auto parent = nodes_.find(parent_path);
            if (parent == nodes_.end())
                return "Add of " + path + " under the unknown parent " + parent_path;
            std::vector<std::string>& siblings = parent->second.children;
            if (index > siblings.size())
                return "Add of " + path + " behind the end of its siblings";
            siblings.insert(siblings.begin() + static_cast<std::ptrdiff_t>(index), path);
        }
        return add_subtree(node, parent_path);
    }

    std::string add_subtree(const Corvel::RenderNode& node, const std::string& parent_path) {
        Node made{node, parent_path, {}};
        made.shown.children.clear();
        for (const Corvel::RenderNode& child : node.children)
            made.children.push_back(child.path);
        if (!nodes_.emplace(node.path, std::move(made)).second)
            return "Add of the known path " + node.path.get() + " within a subtree";
        for (const Corvel::RenderNode& child : node.children) {
            std::string fault = add_subtree(child, node.path);
            if (!fault.empty())
                return fault;
        }
        return {};
    }

    std::string remove(const std::string& path) {
        auto node = nodes_.find(path);
        if (node == nodes_.end())
            return "Remove of the unknown path " + path;
        auto parent = nodes_.find(node->second.parent_path);
        if (parent != nodes_.end())
            std::erase(parent->second.children, path);
        erase_subtree(path);
        return {};
    }

    void erase_subtree(const std::string& path) {
        auto node = nodes_.extract(path);
        for (const std::string& child : node.mapped().children)
            erase_subtree(child);
    }

    std::string update(const Corvel::RenderPatch& patch) {
        auto node = nodes_.find(patch.path);
        if (node == nodes_.end())
            return "Update of the unknown path " + patch.path.get();
        if (!patch.node.children.empty())
            return "Update of " + patch.path.get() + " carries children";
        if (node->second.shown.kind != patch.node.kind)
            return "Update of " + patch.path.get() + " changes its kind";
        node->second.shown = patch.node;
        return {};
    }

    static std::string difference(Node node, Node wanted, Order order) {
        const Corvel::RenderNode& left = node.shown;
        const Corvel::RenderNode& right = wanted.shown;
        if (left.kind != right.kind || left.name != right.name || left.text != right.text ||
            left.style != right.style || left.items != right.items ||
            left.selected != right.selected)
            return "another content at ";
        if (order == Order::Any) {
            std::sort(node.children.begin(), node.children.end());
            std::sort(wanted.children.begin(), wanted.children.end());
        }
        return node.children == wanted.children ? "" : "other children below ";
    }

    std::map<std::string, Node> nodes_;
    std::map<std::string, std::string> pushed_texts_; ///< by SetEditorText, the last for each path
};

} // namespace TestSupport
