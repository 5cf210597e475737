#include "layers/tree_paths.h"

#include "layers/object_records.h"

namespace Layers {

LLayer* enclosing_layer(const LObject& object) {
    LObject* parent = object.parent();
    while (parent != nullptr && parent->as_layer() == nullptr)
        parent = parent->parent();
    return parent != nullptr ? parent->as_layer() : nullptr;
}

const LLayer& top_layer(const LLayer& layer) {
    const LLayer* top = &layer;
    for (const LLayer* outer = enclosing_layer(layer);
         outer != nullptr && outer->parent() != nullptr && outer->parent()->parent() != nullptr;
         outer = enclosing_layer(*outer))
        top = outer;
    return *top;
}

const LLayer& root_layer(const LLayer& layer) {
    const LLayer* root = &layer;
    while (const LLayer* const outer = enclosing_layer(*root))
        root = outer;
    return *root;
}

std::string full_path(const LObject& object) {
    std::vector<const LObject*> chain;
    for (const LObject* o = &object; o->parent() != nullptr; o = o->parent())
        chain.push_back(o);
    std::string path;
    for (auto link = chain.rbegin(); link != chain.rend(); ++link) {
        const LObject* const o = *link;
        const bool is_variant = o->parent()->as_attribute() != nullptr;
        const bool is_first = o->parent()->parent() == nullptr;
        if (is_variant)
            path += '.';
        else if (!is_first || o->as_attribute() != nullptr)
            path += '/';
        path += o->name();
    }
    return path;
}

void push_child_layers(std::vector<LLayer*>& stack, const LLayer& layer) {
    const std::vector<LLayer*>& layers = Records::child_layers(layer);
    stack.insert(stack.end(), layers.rbegin(), layers.rend());
}

} // namespace Layers
