#include "layers/base_resolution.h"

#include "layers/chain_ends.h"
#include "layers/object_records.h"
#include "layers/tree_paths.h"

#include <algorithm>
#include <vector>

namespace Layers {
namespace {

/// Walks the layers from outer to inner. Those on the way to the present one are marked as being
/// visited, so that a chain of bases that meets one of them is found without looking further.
class BaseResolver {
public:
    explicit BaseResolver(LLayer& start) {
        for (LLayer* outer = enclosing_layer(start); outer != nullptr;
             outer = enclosing_layer(*outer))
            path_.push_back({outer});
        std::reverse(path_.begin(), path_.end());
        outer_count_ = path_.size();
        for (const Step& step : path_)
            Records::visiting(*step.layer) = true;
        enter(start);
    }

    ~BaseResolver() {
        for (const Step& step : path_)
            Records::visiting(*step.layer) = false;
    }
    BaseResolver(const BaseResolver&) = delete;
    BaseResolver& operator=(const BaseResolver&) = delete;

    void run() {
        while (path_.size() > outer_count_)
            step();
    }

private:
    struct Step {
        LLayer* layer;
        std::size_t next_child = 0;
    };

    void step() {
        Step& step = path_.back();
        const std::vector<LLayer*>& children = Records::child_layers(*step.layer);
        if (step.next_child < children.size())
            return enter(*children[step.next_child++]);
        Records::visiting(*step.layer) = false;
        path_.pop_back();
    }

    void enter(LLayer& layer) {
        Records::visiting(layer) = true;
        path_.push_back({&layer});
        Records::LayerRecord& record = Records::of(layer);
        if (record.base != nullptr) {
            ends_.forget(); // what is known may lead past this layer
            return;
        }
        if (record.base_path.empty())
            return;
        // The top layer is the one two steps below the root, or the layer itself.
        record.base = find_base(layer, *path_[std::min<std::size_t>(path_.size() - 1, 2)].layer);
        if (record.base == nullptr)
            record.base = find_base(layer, *path_.front().layer);
        if (record.base != nullptr)
            note_shape_change();
    }

    // No layer on the candidate's chain of bases may be `layer` itself or contain it.
    LLayer* find_base(const LLayer& layer, const LLayer& start) {
        LLayer* const candidate = start.find_layer(layer.base_path());
        if (candidate == nullptr)
            return nullptr;
        const LLayer* const end = ends_.end_of(candidate, [](const LLayer& l) -> const LLayer* {
            return Records::visiting(l) ? nullptr : l.base();
        });
        return Records::visiting(*end) ? nullptr : candidate;
    }

    std::vector<Step> path_;      ///< from the root on
    std::size_t outer_count_ = 0; ///< how many lie around the layer that the walk started from
    ChainEnds<LLayer> ends_;
};

} // namespace

void resolve_bases(LLayer& layer) {
    ++tree_revisions.load;
    BaseResolver(layer).run();
}

} // namespace Layers
