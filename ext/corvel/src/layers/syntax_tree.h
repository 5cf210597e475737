#pragma once

#include <cstdint>
#include <memory>
#include <memory_resource>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace Layers {

// The syntax tree of one file. Nodes are plain records: their lists lie in the storage that the
// `FileNode` owns, their texts there or in the source text, which must outlive the tree. So a tree
// of any depth is freed at once. Lists keep source order.

/// One part of a name: a plain word, which has one alternative, or an expansion "(A, B)".
struct NamePart {
    std::span<const std::string_view> alternatives; ///< an alternative may be empty
};

/// A name of several parts, which one blank joins when it becomes text.
struct NameNode {
    std::span<const NamePart> parts;
    std::uint64_t line = 0; ///< 1-based line on which the name began

    bool empty() const { return parts.empty(); }
};

/// How a declaration is addressed: "Outer/Inner/Group.Name".
struct DeclarationName {
    std::span<const NameNode> traversal; ///< the path before the last "/", outermost first
    NameNode group;                      ///< the word before "."; empty without one
    NameNode name;                       ///< the last component; empty for a group-set
};

/// A reference to a layer or an attribute, as plain text.
struct ReferenceNode {
    std::span<const std::string_view> traversal;
    std::string_view group;
    std::string_view name;
};

/// The text of a reference: traversal entries each followed by "/", then "group." and the name.
std::string reference_text(const ReferenceNode& reference);

struct Color {
    std::uint32_t red = 0; ///< 0 to 255, as are the others
    std::uint32_t green = 0;
    std::uint32_t blue = 0;
    std::uint32_t alpha = 255;

    friend bool operator==(const Color&, const Color&) = default;
};

/// None, a Boolean, a number, a string with its escapes resolved, or a colour, in this order.
using LiteralValue = std::variant<std::monostate, bool, double, std::string_view, Color>;

/// A literal or a reference. A failed expression leaves the literal none.
using ValueNode = std::variant<LiteralValue, ReferenceNode>;

/// A value for the case that all of some states hold.
struct StateNode {
    std::span<const std::string_view> states;
    ValueNode value;
};

struct AttributeNode {
    DeclarationName declaration;
    ValueNode value;
    std::span<const StateNode> states;
};

/// "Group." and an indented block of attributes that all bear the group.
struct GroupSetNode {
    DeclarationName declaration;
    std::span<const AttributeNode> attributes;
};

/// "@State:" and an indented block of values for it.
struct StateSetNode {
    std::span<const std::string_view> states;
    std::span<const AttributeNode> attributes;
    std::span<const GroupSetNode> group_sets;
};

struct LayerNode {
    DeclarationName declaration;
    std::optional<ReferenceNode> base; ///< the target of "<<"
    std::span<const LayerNode> layers;
    std::span<const AttributeNode> attributes;
    std::span<const GroupSetNode> group_sets;
    std::span<const StateSetNode> state_sets;
};

/// The top of a file: a layer without declaration and base, and the memory of the whole tree.
struct FileNode : LayerNode {
    std::unique_ptr<std::pmr::monotonic_buffer_resource> storage;
};

} // namespace Layers
