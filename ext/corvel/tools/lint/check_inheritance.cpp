#include "checks.h"
#include "layers/tree_paths.h"
#include "runtime/corvel_app.h"

#include <map>
#include <string>

namespace CorvelLint {
namespace {

/// Finds "<<" references that no layer answers to, and those that come too late: a top-level layer
/// inherits once only, when the first folder that names it has been loaded.
class BaseChecker final : public SourceVisitor {
public:
    BaseChecker(const StyleTree& tree, Findings& findings)
        : tree_(tree)
        , findings_(findings) {}

    void check(const StyleSource& source) {
        source_ = &source;
        visit(source);
    }

private:
    void on_layer(const std::string& path, const Layers::LayerNode* node,
                  const Place& place) override {
        const std::string unit = linked_unit(path);
        const auto first = first_folder_.emplace(unit, source_->directory).first;
        if (node == nullptr || !node->base)
            return;
        const std::string base = '`' + Layers::reference_text(*node->base) + '`';
        const Layers::LLayer* const layer = tree_.root().find_layer(path);
        if (layer == nullptr || layer->base() == nullptr)
            findings_.add(place, "no layer " + base + " for `" + path + "` to inherit from");
        else if (first->second != source_->directory)
            findings_.add(place, '`' + path + "` inherits nothing from " + base + ": `" + unit +
                                     "` was complete before this folder was loaded");
    }

    // The part of a path that is linked as a whole: a child of the layer that folders load into.
    std::string linked_unit(const std::string& path) const {
        const std::size_t skipped = source_->target.empty() ? 0 : source_->target.size() + 1;
        return path.substr(0, path.find('/', skipped));
    }

    const StyleTree& tree_;
    Findings& findings_;
    const StyleSource* source_ = nullptr;
    std::map<std::string, std::size_t> first_folder_; ///< by linked unit
};

// A child that is written again without its base becomes a plain box.
void check_kinds_of_children(const StyleTree& tree, Findings& findings) {
    tree.for_each_layer([&](const Layers::LLayer& layer) {
        if (layer.base() == nullptr)
            return;
        for (const std::unique_ptr<Layers::LObject>& child : layer.children()) {
            const Layers::LLayer* const own = child->as_layer();
            const Layers::LLayer* const inherited =
                own != nullptr ? layer.base()->find_layer(own->name()) : nullptr;
            if (inherited == nullptr ||
                Corvel::node_kind_of(own) == Corvel::node_kind_of(inherited))
                continue;
            findings.add(tree.place_of(*own), '`' + Layers::full_path(*own) +
                                                  "` loses the kind of `" +
                                                  Layers::full_path(*inherited) +
                                                  "`; repeat where it comes from with <<");
        }
    });
}

} // namespace

void check_inheritance(const StyleTree& tree, Findings& findings) {
    BaseChecker checker(tree, findings);
    for (const std::unique_ptr<StyleSource>& source : tree.sources())
        if (source->diagnostics.empty())
            checker.check(*source);
    check_kinds_of_children(tree, findings);
}

} // namespace CorvelLint
