#pragma once

#include "runtime/binds.h"
#include "runtime/layer_plan.h"
#include "runtime/render_node.h"

#include <cstdint>
#include <map>
#include <memory>
#include <memory_resource>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Corvel {

struct ListEntry;
struct Theme;
struct NodeSlot;

using SharedRows = SharedValue<std::vector<ListEntry>>;

/// The entries that the state maps hold for one path; null where a map has none.
struct Overrides {
    const std::set<std::string>* states = nullptr;
    const GrowingText* text = nullptr;
    const SharedText* selected = nullptr;
    const SharedItems* items = nullptr;
    const std::string* source = nullptr;
    const std::string* href = nullptr;
    const std::string* data = nullptr;
    const double* height = nullptr;
};

/// A fixed number of slots in one piece of a pool, which keeps what a render walks through close
/// together.
class SlotArray {
public:
    SlotArray() = default;
    SlotArray(std::pmr::memory_resource& pool, std::size_t count);
    SlotArray(SlotArray&& other) noexcept { *this = std::move(other); }
    SlotArray& operator=(SlotArray&& other) noexcept;
    ~SlotArray();

    NodeSlot* begin() const { return slots_; }
    NodeSlot* end() const;
    std::size_t size() const { return count_; }
    NodeSlot& operator[](std::size_t position) const;

private:
    std::pmr::memory_resource* pool_ = nullptr;
    NodeSlot* slots_ = nullptr;
    std::size_t count_ = 0;
};

/// The row that nodes are built for, or no row.
struct RowContext {
    const std::map<std::string, std::string>* fields = nullptr;
    const std::string* list_key = nullptr; ///< null outside a list
    const std::string* item_id = nullptr;
    /// Never given to two rows of different content; 0 is the context outside a list.
    std::uint64_t version = 0;
};

/// One row of a list as it was last built.
struct RowSlot {
    std::unique_ptr<NodeSlot> item;
    std::unique_ptr<NodeSlot> separator; ///< null until the row first needs one
    std::uint64_t version = 0;
};

/// The rows of a "List:" node.
struct RowSlots {
    std::shared_ptr<const Binds> binds; ///< holds the list's key
    const SharedRows* source = nullptr; ///< the list's entry in the application's rows
    SharedRows shown;                   ///< the rows that `rows` was made for
    std::vector<RowSlot> rows;
};

/// One card of a "ThemeList" node.
struct CardSlot {
    std::unique_ptr<NodeSlot> card;
    const Theme* theme = nullptr;
};

struct CardSlots {
    std::uint64_t epoch = 0; ///< of the themes that `cards` was made for
    std::vector<CardSlot> cards;
};

/// What only some nodes have.
struct SlotDetails {
    Overrides overrides;
    std::unique_ptr<RowSlots> rows;   ///< mode Rows
    std::unique_ptr<CardSlots> cards; ///< mode Themes
};

/// What the last render found out about one node, kept so that the next render repeats none of it
/// while its inputs stay the same. Slots form a tree along the node paths; those of hidden nodes
/// stay, ready to be shown again.
/// A slot stays where it is, since the index points to it.
struct NodeSlot {
    NodeSlot() = default;
    NodeSlot(const NodeSlot&) = delete;
    NodeSlot& operator=(const NodeSlot&) = delete;

    /// Whether the node is shown by its parent. Only the children of layers can be hidden or
    /// invisible; rows and cards always have their place.
    bool shown() const { return !hidden && (visible || keeps_place); }

    // What every render looks at comes first. The inputs of the content:
    const StateSet* inherited = nullptr;
    std::uint64_t epoch = 0; ///< of the style inputs; 0: nothing is known yet
    std::uint64_t context_version = 0;
    bool touched = true; ///< the state maps may hold other entries for its path
    bool viewport_dependent = false;

    bool hideable = false;         ///< it is a child of a layer
    bool hidden = false;           ///< hideable, and its path is hidden
    bool visible = true;           ///< its style's
    bool keeps_place = false;      ///< shown whether visible or not
    bool written = false;          ///< the kept tree has this content
    bool children_written = false; ///< the kept tree has these children, each as its `in_tree` says
    bool in_tree = false;          ///< the kept tree has the node
    bool distinct_children = true; ///< no two child slots share a name
    bool expanded = false;         ///< `children` has been filled
    bool is_card = false;          ///< it is a theme's card
    bool has_row_target = false;   ///< a click on it is an action on a row or list
    ChildMode mode = ChildMode::Layers;
    NodeKind kind = NodeKind::Box;
    const StateSet* states = nullptr; ///< handed down to the children
    SlotArray children;               ///< mode Layers
    std::unique_ptr<SlotDetails> details;

    // The content.
    SharedText name;
    SharedText path;
    GrowingText text;
    SharedStyle style;

    LayerPlan* plan = nullptr;
    double viewport_height = 0;       ///< an input, only heeded if `viewport_dependent`
    NodeSlot* next_of_path = nullptr; ///< another slot of the same path
    NodeSlot* previous_of_path = nullptr;
};

inline NodeSlot* SlotArray::end() const {
    return slots_ + count_;
}

inline NodeSlot& SlotArray::operator[](std::size_t position) const {
    return slots_[position];
}

/// Finds slots by path. Several nodes can have one path, since a row's id may be any text.
class SlotIndex {
public:
    void add(NodeSlot& slot);
    /// Takes `slot` and all below it out.
    void remove(NodeSlot& slot);
    /// The first slot of `path`, null if there is none; the others follow by `next_of_path`.
    NodeSlot* find(std::string_view path) const;
    void clear() { slots_.clear(); }

private:
    void remove_one(NodeSlot& slot);

    std::unordered_map<std::string_view, NodeSlot*> slots_; ///< keys live in the first slot's path
};

} // namespace Corvel
