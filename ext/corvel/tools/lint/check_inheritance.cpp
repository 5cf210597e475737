#include "checks.h"
#include "layers/tree_paths.h"
#include "paths.h"
#include "runtime/corvel_app.h"

#include <string>
#include <unordered_map>

namespace CorvelLint {
namespace {

using Layers::LLayer;

std::string in_ticks(const std::string& text) {
    return '`' + text + '`';
}

bool contains(const LLayer& outer, const LLayer* inner) {
    for (; inner != nullptr; inner = Layers::enclosing_layer(*inner))
        if (inner == &outer)
            return true;
    return false;
}

/// Finds "<<" references that no layer answers to, and those that come too late: a top-level layer
/// inherits once only, when the first folder that names it has been loaded.
class BaseChecker {
public:
    BaseChecker(const StyleTree& tree, Findings& findings)
        : tree_(tree)
        , findings_(findings)
        , corvel_(tree.root().find_layer("Corvel")) {}

    void check(const DeclaredLayer& declared) {
        const LLayer& unit = linked_unit(*declared.layer);
        const auto first = first_folder_.emplace(&unit, declared.directory).first;
        if (declared.base.empty())
            return;
        const LLayer& layer = *declared.layer;
        if (layer.base() == nullptr)
            add_missing(declared);
        else if (first->second != declared.directory)
            findings_.add(declared.place, declared.base,
                          in_ticks(path_of(layer)) + " inherits nothing from " +
                              in_ticks(declared.base) + ": " + in_ticks(path_of(unit)) +
                              " was complete before this folder was loaded",
                          "inherit in the folder that names " + in_ticks(path_of(unit)) +
                              " first, or choose another name");
    }

private:
    // The layer that is linked as a whole: a child of the layer that folders load into.
    const LLayer& linked_unit(const LLayer& layer) const {
        const LLayer* unit = &layer;
        for (const LLayer* outer = Layers::enclosing_layer(*unit);
             outer != nullptr && outer != &tree_.root() && outer != corvel_;
             outer = Layers::enclosing_layer(*unit))
            unit = outer;
        return *unit;
    }

    void add_missing(const DeclaredLayer& declared) {
        const LLayer& layer = *declared.layer;
        const LLayer* candidate = Layers::top_layer(layer).find_layer(declared.base);
        if (candidate == nullptr)
            candidate = tree_.root().find_layer(declared.base);
        if (candidate == nullptr)
            findings_.add(declared.place, declared.base,
                          "no layer " + in_ticks(declared.base) + " for " +
                              in_ticks(path_of(layer)) + " to inherit from",
                          suggest_layer(tree_, layer, declared.base));
        else if (contains(*candidate, &layer) && candidate != &layer)
            findings_.add(declared.place, declared.base,
                          in_ticks(path_of(layer)) + " cannot inherit from " +
                              in_ticks(declared.base) + ", which contains it",
                          "part what both need into a layer of its own");
        else
            findings_.add(declared.place, declared.base, "bases in a circle: " + circle(declared),
                          "take out one \"<<\"");
    }

    std::string circle(const DeclaredLayer& declared) const {
        const LLayer& layer = *declared.layer;
        std::string text = in_ticks(path_of(layer));
        const LLayer* base = Layers::top_layer(layer).find_layer(declared.base);
        if (base == nullptr)
            base = tree_.root().find_layer(declared.base);
        for (; base != nullptr && base != &layer; base = base->base())
            text += " << " + in_ticks(path_of(*base));
        return text + " << " + in_ticks(path_of(layer));
    }

    const StyleTree& tree_;
    Findings& findings_;
    const LLayer* corvel_;
    std::unordered_map<const LLayer*, std::size_t> first_folder_; ///< by linked unit
};

// A child that is written again without its base becomes a plain box.
void check_kinds_of_children(const StyleTree& tree, Findings& findings) {
    tree.for_each_layer([&](const LLayer& layer) {
        if (layer.base() == nullptr)
            return;
        for (const std::unique_ptr<Layers::LObject>& child : layer.children()) {
            const LLayer* const own = child->as_layer();
            const LLayer* const inherited =
                own != nullptr ? layer.base()->find_layer(own->name()) : nullptr;
            if (inherited == nullptr ||
                Corvel::node_kind_of(own) == Corvel::node_kind_of(inherited))
                continue;
            findings.add(tree.place_of(*own), own->name(),
                         in_ticks(path_of(*own)) + " loses the kind of " +
                             in_ticks(path_of(*inherited)),
                         "repeat where it comes from: write `" + own->name() + " << " +
                             path_of(*inherited) + '`');
        }
    });
}

// Without its base a border is a node of its own.
void check_borders(const StyleTree& tree, Findings& findings) {
    if (tree.root().find_layer("Corvel/Detail") == nullptr)
        return;
    for (const DeclaredLayer& declared : tree.declared_layers())
        if (declared.layer->name() == "Border" && declared.base.empty() &&
            !describes_its_parent(*declared.layer))
            findings.add(declared.place, "Border",
                         in_ticks(path_of(*declared.layer)) + " has no base and is shown as a box",
                         "write `Border << Corvel/Outline`");
}

} // namespace

void check_inheritance(const StyleTree& tree, Findings& findings) {
    BaseChecker checker(tree, findings);
    for (const DeclaredLayer& declared : tree.declared_layers())
        checker.check(declared);
    check_kinds_of_children(tree, findings);
    check_borders(tree, findings);
}

} // namespace CorvelLint
