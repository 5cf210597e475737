#include "layers/chain_ends.h"
#include "layers/linker.h"
#include "layers/object_records.h"
#include "layers/tree_paths.h"

#include <vector>

namespace Layers {
namespace {

bool contains(const LLayer& outer, const LLayer* inner) {
    for (const LObject* object = inner; object != nullptr; object = object->parent())
        if (object == &outer)
            return true;
    return false;
}

bool has_based_ancestor(const LLayer& layer) {
    for (const LLayer* outer = enclosing_layer(layer); outer; outer = enclosing_layer(*outer))
        if (outer->base() != nullptr)
            return true;
    return false;
}

class BaseResolver {
public:
    void resolve(LLayer& layer) {
        Records::LayerRecord& record = Records::of(layer);
        if (record.base != nullptr || record.base_path.empty())
            return;
        record.base = find_base(layer, top_layer(layer));
        if (record.base == nullptr)
            record.base = find_base(layer, root_layer(layer));
        if (record.base != nullptr)
            note_shape_change();
    }

private:
    LLayer* find_base(const LLayer& layer, const LLayer& start) {
        LLayer* const candidate = start.find_layer(layer.base_path());
        return candidate != nullptr && is_allowed(layer, *candidate) ? candidate : nullptr;
    }

    // No layer on the candidate's chain of bases may be `layer` itself or contain it. While those
    // have no bases themselves, they can only be the end of the chain.
    bool is_allowed(const LLayer& layer, const LLayer& candidate) {
        const auto base_of = [](const LLayer& l) { return l.base(); };
        if (!has_based_ancestor(layer))
            return !contains(*ends_.end_of(&candidate, base_of), &layer);
        for (const LLayer* base = &candidate; base != nullptr; base = base->base())
            if (contains(*base, &layer))
                return false;
        return true;
    }

    ChainEnds<LLayer> ends_;
};

} // namespace

void resolve_bases(LLayer& layer) {
    ++tree_revisions.load;
    tree_revisions.copies = 0;
    BaseResolver resolver;
    std::vector<LLayer*> pending{&layer};
    while (!pending.empty()) {
        LLayer& current = *pending.back();
        pending.pop_back();
        resolver.resolve(current);
        push_child_layers(pending, current);
    }
}

} // namespace Layers
