#pragma once

#include "layers/style_reader.h"
#include "runtime/binds.h"
#include "runtime/render_node.h"
#include "runtime/state_sets.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Layers {
class LLayer;
} // namespace Layers

namespace Corvel {

/// All besides layer and states that a style depends on.
struct StyleInputs {
    /// Raised whenever styles may read otherwise: a value of the style tree, the theme in force
    /// or a factor below has changed.
    std::uint64_t epoch = 0;
    double icon_scale = 1;
    double font_scale = 1;
    double size_scale = 1;
    /// "Secondary" of the theme in force, for Markdown; null without a theme.
    const std::string* secondary_color = nullptr;
};

/// What a layer says of its nodes under one set of states.
struct LayerStyle {
    const StateSet* states = nullptr;
    std::uint64_t epoch = 0; ///< of the inputs that it was read under
    SharedStyle style;
    GrowingText text;                   ///< the style's text, shared by the nodes that show it
    std::shared_ptr<const Binds> binds; ///< null for a style without a bind
};

/// All about one layer that rendering needs, read once: its kind, its template children and its
/// style under each set of states met. A plan describes the structure of the style tree as it was
/// when the plan was made; the values behind its styles may change.
class LayerPlan {
public:
    explicit LayerPlan(const Layers::LLayer& layer);

    const Layers::LLayer& layer() const { return *layer_; }
    NodeKind kind() const { return kind_; }
    const SharedText& name() const { return name_; }
    /// The layer's child layers in order, less those that inherit from "Detail".
    std::vector<LayerPlan>& children();
    /// Whether no two children share a name. Valid after `children`.
    bool distinct_children() const { return distinct_children_; }
    /// The style under `states`, read again if `inputs` has moved on. A style that reads the same
    /// as before keeps its record. Valid until the next call.
    const LayerStyle& style(const StateSet* states, const StyleInputs& inputs);

private:
    void refresh(LayerStyle& entry, const StyleInputs& inputs);

    const Layers::LLayer* layer_;
    Layers::StyleReader reader_;
    NodeKind kind_;
    SharedText name_;
    bool children_known_ = false;
    bool distinct_children_ = true;
    std::vector<LayerPlan> children_;
    LayerStyle first_style_;              ///< most layers are only met under one set of states
    std::vector<LayerStyle> more_styles_; ///< under further sets
};

/// Whether a layer below `layer` is of this kind, the prototypes in "Corvel" left out.
bool holds_kind(const Layers::LLayer& layer, NodeKind kind);

/// The layers that stand for nodes below `layer`, in order: its child layers less those with a
/// layer named "Detail" behind them in their chain of bases.
std::vector<const Layers::LLayer*> template_children(const Layers::LLayer& layer);

} // namespace Corvel
