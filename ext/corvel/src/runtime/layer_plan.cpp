#include "runtime/layer_plan.h"

#include "layers/attributes.h"
#include "layers/object_model.h"
#include "runtime/corvel_app.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace Corvel {
namespace {

constexpr std::array<std::pair<std::string_view, NodeKind>, 14> PROTOTYPES = {{
    {"Button", NodeKind::Button},
    {"Icon", NodeKind::Icon},
    {"Text", NodeKind::Text},
    {"Editor", NodeKind::Editor},
    {"Image", NodeKind::Image},
    {"Video", NodeKind::Video},
    {"Markdown", NodeKind::Markdown},
    {"QR", NodeKind::QR},
    {"Scanner", NodeKind::Scanner},
    {"Check Box", NodeKind::CheckBox},
    {"Combo Box", NodeKind::ComboBox},
    {"Link", NodeKind::Link},
    {"Host", NodeKind::Host},
    {"Box", NodeKind::Box},
}};

bool inherits_from_detail(const Layers::LLayer& layer) {
    for (const Layers::LLayer* base = layer.base(); base; base = base->base()) {
        if (base->name() == "Detail")
            return true;
    }
    return false;
}

bool names_distinct(const std::vector<LayerPlan>& plans) {
    std::unordered_set<std::string_view> names;
    for (const LayerPlan& plan : plans) {
        if (!names.insert(*plan.name()).second)
            return false;
    }
    return true;
}

} // namespace

NodeKind node_kind_of(const Layers::LLayer* layer) {
    for (; layer; layer = layer->base()) {
        for (const auto& [name, kind] : PROTOTYPES) {
            if (layer->name() == name)
                return kind;
        }
    }
    return NodeKind::Box;
}

bool holds_kind(const Layers::LLayer& layer, NodeKind kind) {
    return std::any_of(layer.children().begin(), layer.children().end(), [&](const auto& child) {
        const auto* child_layer = dynamic_cast<const Layers::LLayer*>(child.get());
        if (!child_layer)
            return false;
        const bool prototype = !child_layer->base() && layer.name() == "Corvel";
        return (!prototype && node_kind_of(child_layer) == kind) || holds_kind(*child_layer, kind);
    });
}

std::vector<const Layers::LLayer*> template_children(const Layers::LLayer& layer) {
    std::vector<const Layers::LLayer*> layers;
    for (const auto& child : layer.children()) {
        const auto* child_layer = dynamic_cast<const Layers::LLayer*>(child.get());
        if (child_layer && !inherits_from_detail(*child_layer))
            layers.push_back(child_layer);
    }
    return layers;
}

LayerPlan::LayerPlan(const Layers::LLayer& layer)
    : layer_(&layer)
    , reader_(&layer)
    , kind_(node_kind_of(&layer))
    , name_(layer.name()) {}

std::vector<LayerPlan>& LayerPlan::children() {
    if (!children_known_) {
        children_known_ = true;
        const std::vector<const Layers::LLayer*> layers = template_children(*layer_);
        children_.reserve(layers.size());
        for (const Layers::LLayer* layer : layers)
            children_.emplace_back(*layer);
        distinct_children_ = names_distinct(children_);
    }
    return children_;
}

const LayerStyle& LayerPlan::style(const StateSet* states, const StyleInputs& inputs) {
    LayerStyle* entry = &first_style_;
    if (first_style_.states && first_style_.states != states) {
        auto known = std::find_if(more_styles_.begin(), more_styles_.end(),
                                  [states](const LayerStyle& s) { return s.states == states; });
        entry = known == more_styles_.end() ? &more_styles_.emplace_back() : &*known;
    }
    entry->states = states;
    if (entry->epoch != inputs.epoch)
        refresh(*entry, inputs);
    return *entry;
}

void LayerPlan::refresh(LayerStyle& entry, const StyleInputs& inputs) {
    const std::vector<std::string>& states = entry.states->names();
    SharedStyle style = SharedStyle::made_by([&] { return reader_.read(states); });
    Layers::apply_mobile_scale(style.edit(), layer_, states, kind_ == NodeKind::Icon,
                               inputs.icon_scale, inputs.font_scale, inputs.size_scale);
    if (kind_ == NodeKind::Markdown && inputs.secondary_color)
        style.edit().secondary_text_color = *inputs.secondary_color;

    // Beside the style: a node that changes its copy of the style does not copy its text.
    if (!style->text_attr.empty() || !entry.text.empty()) {
        std::string text = std::exchange(style.edit().text_attr, {});
        if (!(entry.text == text))
            entry.text = std::move(text);
    }

    const bool first = entry.epoch == 0;
    entry.epoch = inputs.epoch;
    if (!first && style == entry.style)
        return;
    if (style->bind.empty())
        entry.binds = nullptr;
    else if (first || style->bind != entry.style->bind)
        entry.binds = std::make_shared<const Binds>(parse_binds(style->bind));
    entry.style = std::move(style);
}

} // namespace Corvel
