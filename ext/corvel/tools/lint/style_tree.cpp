#include "style_tree.h"

#include "layers/log.h"
#include "layers/tree_paths.h"

#include <utility>

namespace CorvelLint {

StyleTree::StyleTree(const Options& options)
    : engine_(this) {
    const Layers::LogSink earlier =
        Layers::set_log_sink([this](const std::string& message) { log_.push_back(message); });
    for (const std::filesystem::path& folder : options.widgets)
        load(folder, "Corvel");
    for (const auto* folders : {&options.mounts, &options.styles})
        for (const std::filesystem::path& folder : *folders)
            load(folder, "");
    engine_.link_attributes();
    Layers::set_log_sink(earlier);
}

void StyleTree::load(const std::filesystem::path& folder, const std::string& layer) {
    engine_.load_directory(folder, layer);
    ++directory_;
}

void StyleTree::on_layer(Layers::LLayer& layer, const Layers::LayerNode* node, std::uint64_t line) {
    places_.try_emplace(&layer, Place{file_, line});
    const bool has_base = node != nullptr && node->base;
    declared_layers_.push_back({&layer,
                                {file_, line},
                                has_base ? Layers::reference_text(*node->base) : std::string(),
                                directory_});
}

// The last declaration counts.
void StyleTree::on_value(Layers::LAttribute& assigned, const Layers::ValueNode& value,
                         std::uint64_t line) {
    places_.insert_or_assign(&assigned, Place{file_, line});
    const auto* literal = std::get_if<Layers::LiteralValue>(&value);
    if (literal != nullptr && std::holds_alternative<Layers::Color>(*literal))
        colors_.insert(&assigned);
    if (assigned.parent()->as_attribute() != nullptr)
        places_.try_emplace(assigned.parent(), Place{file_, line});
}

Place StyleTree::place_of(const Layers::LObject& object) const {
    for (const Layers::LObject* o = &object; o != nullptr; o = o->parent())
        if (const auto found = places_.find(o); found != places_.end())
            return found->second;
    return {};
}

void StyleTree::for_each_layer(const LayerVisit& visit) const {
    std::vector<Layers::LLayer*> pending;
    Layers::push_child_layers(pending, root());
    while (!pending.empty()) {
        Layers::LLayer& layer = *pending.back();
        pending.pop_back();
        visit(layer);
        Layers::push_child_layers(pending, layer);
    }
}

void StyleTree::for_each_attribute(const AttributeVisit& visit) const {
    const auto visit_all = [&visit](const Layers::LLayer& layer) {
        for (const std::unique_ptr<Layers::LObject>& child : layer.children()) {
            Layers::LAttribute* const attribute = child->as_attribute();
            if (attribute == nullptr)
                continue;
            visit(*attribute);
            for (const std::unique_ptr<Layers::LObject>& variant : attribute->children())
                if (variant->as_attribute() != nullptr)
                    visit(*variant->as_attribute());
        }
    };
    visit_all(root());
    for_each_layer(visit_all);
}

void StyleTree::for_each_variant(const Layers::LLayer& layer, const std::string& name,
                                 const AttributeVisit& visit) {
    Layers::LAttribute* const attribute = layer.find_attribute(name);
    if (attribute == nullptr)
        return;
    visit(*attribute);
    for (const std::unique_ptr<Layers::LObject>& child : attribute->children())
        if (Layers::LAttribute* const variant = child->as_attribute())
            visit(*variant);
}

const Layers::LAttribute& owner_of(const Layers::LAttribute& attribute) {
    const Layers::LAttribute* const outer = attribute.parent()->as_attribute();
    return outer != nullptr ? *outer : attribute;
}

Layers::LLayer& layer_of(const Layers::LAttribute& attribute) {
    return *Layers::enclosing_layer(attribute);
}

bool describes_its_parent(const Layers::LLayer& layer) {
    for (const Layers::LLayer* base = layer.base(); base != nullptr; base = base->base())
        if (base->name() == "Detail")
            return true;
    return false;
}

std::string path_of(const Layers::LObject& object) {
    std::string path = Layers::full_path(object);
    if (path.starts_with('/')) // of an attribute of the root
        path.erase(0, 1);
    return path;
}

std::vector<std::string> layer_names(const Layers::LLayer& layer) {
    std::vector<std::string> names;
    for (const std::unique_ptr<Layers::LObject>& child : layer.children())
        if (child->as_layer() != nullptr)
            names.push_back(child->name());
    return names;
}

std::vector<std::string> attribute_names(const Layers::LLayer& layer) {
    std::vector<std::string> names;
    for (const std::unique_ptr<Layers::LObject>& child : layer.children())
        if (child->as_attribute() != nullptr)
            names.push_back(child->name());
    return names;
}

} // namespace CorvelLint
