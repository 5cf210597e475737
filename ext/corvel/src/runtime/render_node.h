#pragma once

#include "layers/node_style.h"
#include "runtime/growing_text.h"
#include "runtime/shared_value.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

namespace Corvel {

/// What a node is, decided by the widget prototype that its layer inherits from.
enum class NodeKind : std::uint32_t {
    Box,
    Text,
    Button,
    Icon,
    Editor,
    Image,
    Video,
    Markdown,
    QR,
    CheckBox,
    Link,
    Host,
    Scanner,
    ComboBox,
};

/// One item of a Combo Box.
struct ComboItem {
    std::string value;
    std::string label;

    friend bool operator==(const ComboItem&, const ComboItem&) = default;
};

using SharedStyle = SharedValue<NodeStyle>;

/// The items of a Combo Box as a list that copies share.
class SharedItems : public SharedValue<std::vector<ComboItem>> {
public:
    using SharedValue::SharedValue;
    SharedItems() = default;
    SharedItems(std::initializer_list<ComboItem> items)
        : SharedValue(std::vector(items)) {}

    auto begin() const { return get().begin(); }
    auto end() const { return get().end(); }
    std::size_t size() const { return get().size(); }
    bool empty() const { return get().empty(); }
    const ComboItem& operator[](std::size_t position) const { return get()[position]; }
};

/// One node of the interface as a render sees it. A tree of them is a value; copies share their
/// texts and styles.
struct RenderNode {
    NodeKind kind = NodeKind::Box;
    SharedText name; ///< last component of the path: a layer's name, a row's id, a theme's name
    SharedText path;
    GrowingText text; ///< the text to show
    SharedStyle style;
    SharedItems items;   ///< ComboBox only
    SharedText selected; ///< ComboBox only: value of the selected item
    std::vector<RenderNode> children;
};

enum class PatchKind : std::uint32_t {
    Add,           ///< make `node` with its subtree under `parent_path` at `index`
    Remove,        ///< destroy the node at `path` with its subtree
    Update,        ///< bring the node at `path` up to `node`, whose children are empty
    Replace,       ///< the kind changed: destroy, then make `node` with its subtree; index 0
    SetEditorText, ///< push `node.text` into the Editor at `path`
};

/// One step that brings a view from one render to the next.
struct RenderPatch {
    PatchKind kind = PatchKind::Add;
    SharedText path;
    SharedText parent_path;
    std::int64_t index = 0; ///< position among the parent's children in the new tree
    RenderNode node;
};

} // namespace Corvel
