#include "layers/chain_ends.h"
#include "layers/linker.h"
#include "layers/log.h"
#include "layers/object_records.h"
#include "layers/tree_paths.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Layers {
namespace {

// A bare name is looked for outwards from the layer around the attribute.
LAttribute* find_outwards(const LAttribute& attribute, std::string_view name) {
    const std::uint32_t hash = hash_name(name);
    for (const LLayer* layer = enclosing_layer(attribute); layer != nullptr;
         layer = enclosing_layer(*layer))
        if (LAttribute* const found = Records::find_attribute(*layer, name, hash))
            return found;
    return nullptr;
}

// A path is looked up from the top layer, then from the root.
LAttribute* find_target(const LAttribute& attribute, std::string_view path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos)
        return find_outwards(attribute, path);
    const LLayer* const around = enclosing_layer(attribute);
    if (around == nullptr)
        return nullptr;
    const std::string_view layer_path = path.substr(0, slash);
    const LLayer* layer = top_layer(*around).find_layer(layer_path);
    if (layer == nullptr)
        layer = root_layer(*around).find_layer(layer_path);
    return layer != nullptr ? layer->find_attribute(path.substr(slash + 1)) : nullptr;
}

class LinkResolver {
public:
    void resolve(LAttribute& attribute) {
        if (attribute.has_link())
            resolve_own_link(attribute);
        for (const std::unique_ptr<LObject>& child : attribute.children())
            if (LAttribute* const variant = child->as_attribute())
                resolve(*variant);
        attribute.value_changed().emit();
    }

private:
    void resolve_own_link(LAttribute& attribute) {
        AttributeLink& link = *Records::of(attribute).link;
        LAttribute* target = find_target(attribute, link.path.text());
        link.cyclic = target != nullptr && leads_to(*target, attribute);
        if (link.cyclic)
            target = nullptr;
        if (link.target != nullptr && link.target != target)
            ends_.forget();
        Records::attach(attribute, target);
        if (target == nullptr && !link.path.empty())
            log_line(std::string("engine: ") + (link.cyclic ? "cyclic" : "unresolved") + " link `" +
                     link.path.text() + "` on attribute `" + full_path(attribute) + "`.");
    }

    // Whether the resolved links from `start` on meet `attribute`, which can only be their end
    // while it has no target itself.
    bool leads_to(const LAttribute& start, const LAttribute& attribute) {
        const auto target_of = [](const LAttribute& a) { return a.link_target(); };
        if (attribute.link_target() == nullptr)
            return ends_.end_of(&start, target_of) == &attribute;
        for (const LAttribute* stop = &start; stop != nullptr; stop = stop->link_target())
            if (stop == &attribute)
                return true;
        return false;
    }

    ChainEnds<LAttribute> ends_;
};

} // namespace

void resolve_link(LAttribute& attribute) {
    LinkResolver().resolve(attribute);
}

void link_attributes(LLayer& layer) {
    LinkResolver resolver;
    std::vector<LLayer*> pending{&layer};
    while (!pending.empty()) {
        const LLayer& current = *pending.back();
        pending.pop_back();
        for (const std::unique_ptr<LObject>& child : current.children())
            if (LAttribute* const attribute = child->as_attribute())
                resolver.resolve(*attribute);
        push_child_layers(pending, current);
    }
}

} // namespace Layers
