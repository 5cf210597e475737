#pragma once

#include "layers/object_model.h"
#include "layers/syntax_tree.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Layers {

/// Pours syntax trees into a layer. The statements of a body apply in source order. Layers of one
/// name are one layer; of two assignments to one attribute the later wins, except that within one
/// file an inline state beats a state-set on the same states, wherever the two stand.
///
/// A few expansions can stand for more names than memory holds. Where one name stands for ten
/// thousand texts, or a file's expansions for three hundred thousand, the rest is left out, with a
/// line in the log.
class LayerBuilder {
public:
    explicit LayerBuilder(LLayer& target);
    ~LayerBuilder();

    /// Adds the statements of a file without diagnostics.
    void pour(const FileNode& file);

private:
    struct Item;
    struct Body;

    void open_body(const LayerNode& node, LLayer& layer, bool is_repetition);
    void apply(const LayerNode& body, const Item& item, LLayer& layer);
    void apply_layer(const LayerNode& node, LLayer& current);
    void apply_attribute(const AttributeNode& node, LLayer& current);
    void apply_group_set(const GroupSetNode& node, LLayer& current, const std::string* state_name);
    void apply_state_set(const StateSetNode& node, LLayer& current);

    void assign(LAttribute& attribute, const AttributeNode& node);
    void assign_state(LAttribute& attribute, const std::string& state_name, const ValueNode& value,
                      bool is_inline);

    bool walk(std::span<const NameNode> path, LLayer& from);
    template <class Visit>
    void for_each_text(const NameNode& name, Visit visit);
    template <class Visit>
    void for_each_attribute(const DeclarationName& name, LLayer& from, Visit visit);
    template <class Visit>
    void for_each_name(const NameNode& name, const std::string& prefix, LLayer& layer,
                       bool is_repetition, Visit visit);
    bool spend_repetition();

    LLayer* target_;
    std::vector<Body> open_bodies_;
    std::vector<LLayer*> reached_; ///< the layers at the end of the path walked last
    std::string name_buffer_;
    std::string attribute_name_;
    bool in_repetition_ = false; ///< within the body of a layer beyond a declaration's first
    std::size_t repetitions_left_ = 0;
};

} // namespace Layers
