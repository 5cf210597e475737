#include "runtime/render_builder.h"
#include "runtime/render_diff.h"

namespace Corvel {

std::vector<RenderPatch> CorvelApp::render_patches() {
    RenderBuilder builder(*this);
    builder.build(state_->retired_tree);

    std::vector<RenderPatch> patches;
    if (state_->previous_tree) {
        const SiblingNames names =
            state_->previous_names_distinct ? SiblingNames::Distinct : SiblingNames::MayRepeat;
        diff_nodes(*state_->previous_tree, state_->retired_tree, names, patches);
        std::swap(*state_->previous_tree, state_->retired_tree);
    } else {
        state_->previous_tree = std::exchange(state_->retired_tree, RenderNode());
        RenderPatch patch;
        patch.path = state_->previous_tree->path;
        patch.node = *state_->previous_tree;
        patches.push_back(std::move(patch));
    }
    state_->previous_names_distinct = builder.names_distinct();

    for (auto& [path, text] : state_->pending_editor_texts) {
        RenderPatch patch;
        patch.kind = PatchKind::SetEditorText;
        patch.path = path;
        patch.node.text = std::move(text);
        patches.push_back(std::move(patch));
    }
    state_->pending_editor_texts.clear();
    return patches;
}

} // namespace Corvel
