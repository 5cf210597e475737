#include "style_tree.h"

#include "layers/log.h"
#include "layers/tree_paths.h"

#include <utility>

namespace CorvelLint {
namespace {

std::string attribute_key(const std::string& path) {
    return ' ' + path;
}

class PlaceCollector final : public SourceVisitor {
public:
    explicit PlaceCollector(std::map<std::string, Place>& places)
        : places_(places) {}

private:
    void on_layer(const std::string& path, const Layers::LayerNode* /*node*/,
                  const Place& place) override {
        places_.emplace(path, place);
    }
    void on_value(const std::string& path, const std::string& /*name*/,
                  const Layers::ValueNode& /*value*/, const Place& place) override {
        places_.insert_or_assign(attribute_key(path), place); // the last one counts
    }

    std::map<std::string, Place>& places_;
};

} // namespace

StyleTree::StyleTree(const Options& options)
    : sources_(read_style_sources(options)) {
    // What the engine logs is found again, with lines, by the checks.
    const Layers::LogSink earlier = Layers::set_log_sink([](const std::string&) {});
    for (const std::filesystem::path& folder : options.widgets)
        engine_.load_directory(folder, "Corvel");
    for (const auto* folders : {&options.mounts, &options.styles})
        for (const std::filesystem::path& folder : *folders)
            engine_.load_directory(folder, "");
    engine_.link_attributes();
    Layers::set_log_sink(earlier);

    PlaceCollector collector(places_);
    for (const std::unique_ptr<StyleSource>& source : sources_)
        if (source->diagnostics.empty())
            collector.visit(*source);
}

Place StyleTree::place_of(const Layers::LObject& object) const {
    for (const Layers::LObject* o = &object; o != nullptr && o->parent() != nullptr;
         o = o->parent()) {
        const bool is_attribute = o->as_attribute() != nullptr;
        const std::string path = Layers::full_path(*o);
        const bool at_root = path.starts_with('/');
        const auto found =
            places_.find(is_attribute ? attribute_key(path.substr(at_root ? 1 : 0)) : path);
        if (found != places_.end())
            return found->second;
    }
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
        for (const std::unique_ptr<Layers::LObject>& child : layer.children())
            if (child->as_attribute() != nullptr)
                for_each_variant(layer, child->name(), visit);
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

const Layers::LAttribute& terminal_attribute(const Layers::LAttribute& attribute) {
    const Layers::LAttribute* end = &attribute;
    while (const Layers::LAttribute* const target = end->link_target())
        end = target;
    return *end;
}

} // namespace CorvelLint
