#pragma once

#include "layers/object_model.h"
#include "layers/shared_name.h"
#include "layers/syntax_tree.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Layers {

class BuildObserver;
class LiteralPool;
class LoadLimits;

/// Pours syntax trees into a layer. The statements of a body apply in source order. Layers of one
/// name are one layer; of two assignments to one attribute the later wins, except that within one
/// file an inline state beats a state-set on the same states, wherever the two stand.
///
/// A few expansions can stand for more names than memory holds: what goes beyond the limits of
/// layers/load_limits.h is left out.
class LayerBuilder {
public:
    /// The limits and the observer, which may be null, must outlive the builder.
    LayerBuilder(LLayer& target, LoadLimits& limits, BuildObserver* observer = nullptr);
    ~LayerBuilder();

    /// Adds the statements of a file without diagnostics, which `limits` knows as the present one.
    void pour(const FileNode& file, const SharedName& name);

private:
    struct Item;
    struct Body;
    struct Assignment;

    void open_body(const LayerNode& node, LLayer& layer, bool is_repetition);
    void apply(const LayerNode& body, const Item& item, LLayer& layer);
    void apply_layer(const LayerNode& node, LLayer& current);
    void apply_attribute(const AttributeNode& node, LLayer& current);
    void apply_group_set(const GroupSetNode& node, LLayer& current, const StateSetNode* states);
    void apply_state_set(const StateSetNode& node, LLayer& current);

    const Assignment& prepare(const AttributeNode& node, const StateSetNode* states,
                              bool is_repeated);
    void fill(Assignment& assignment, const AttributeNode& node, const StateSetNode* states);
    void assign(LAttribute& attribute, const Assignment& assignment);

    bool walk(std::span<const NameNode> path, LLayer& from);
    template <class Visit>
    void for_each_text(const NameNode& name, Visit visit);
    template <class Visit>
    void for_each_attribute(const DeclarationName& name, LLayer& from, std::size_t cost,
                            Visit visit);
    template <class Visit>
    void for_each_name(const NameNode& name, const std::string& prefix, LLayer& layer,
                       std::size_t cost, bool is_repetition, Visit visit);
    bool spend(std::size_t units);

    LLayer* target_;
    LoadLimits* limits_;
    BuildObserver* observer_;
    SharedName file_;
    std::vector<Body> open_bodies_;
    std::vector<LLayer*> reached_; ///< the layers at the end of the path walked last
    /// By node, of statements that are repeated: their texts are made once.
    std::unordered_map<const AttributeNode*, std::unique_ptr<Assignment>> prepared_;
    std::unique_ptr<Assignment> scratch_; ///< of the present statement, if it is not repeated
    std::unique_ptr<LiteralPool> literals_;
    std::string name_buffer_;
    std::string attribute_name_;
    std::uint64_t line_ = 0;     ///< of the statement being applied
    bool in_repetition_ = false; ///< within the body of a layer beyond a declaration's first
};

} // namespace Layers
