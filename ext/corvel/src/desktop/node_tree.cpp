#include "desktop/node_tree.h"

#include "desktop/desktop_view_p.h"
#include "desktop/layout.h"
#include "desktop/node_create.h"
#include "desktop/overlays.h"
#include "desktop/widgets/editor_widget.h"

#include <QBoxLayout>
#include <QList>

#include <utility>
#include <vector>

namespace Corvel {

namespace {

/// The record of a parent, null if it is unknown or cannot be the parent of that path.
DNode* parent_record(ViewState& view, const RenderPatch& patch) {
    const std::string& parent = patch.parent_path;
    const std::string& path = patch.node.path;
    if (parent.empty() || !path.starts_with(parent + "/"))
        return nullptr;
    return view.find(parent);
}

/// Showing a child lays its parent out at once. While more children may follow, the layout is
/// switched off.
void pause_layout(ViewState& view, QLayout* layout) {
    if (!layout->isEnabled() || !layout->parentWidget()->isVisible())
        return;
    layout->setEnabled(false);
    view.queue.paused_layouts.emplace_back(layout);
}

/// The widget may be in the midst of an event. It stays a hidden child until then: to leave its
/// parent, a widget walks through all others of the window.
void discard(QWidget* outer) {
    QWidget* focus = outer->window()->focusWidget();
    if (focus && (focus == outer || outer->isAncestorOf(focus)))
        focus->clearFocus(); // hidden, it would pass the focus on
    outer->hide();
    outer->deleteLater();
}

/// A widget that goes loses the focus on its way, which must not reach the application.
void silence(ViewState& view, QWidget* top) {
    QList<EditorWidget*> editors = top->findChildren<EditorWidget*>();
    if (auto* editor = qobject_cast<EditorWidget*>(top))
        editors.append(editor);
    for (EditorWidget* editor : editors) {
        editor->muted = true;
        view.editors.erase(editor);
    }
}

/// Erases the record of a node below one that goes. Its widgets go with their parents, except
/// those that have none and those in a window of their own.
void forget_node(ViewState& view, NodeMap::iterator entry) {
    DNode& dnode = entry->second;
    close_modal(view, entry->first);
    view.by_outer.erase(dnode.outer);
    view.queue.unbalanced.erase(&dnode);
    view.overlays.floating.erase(entry->first);
    if (!dnode.outer->parentWidget()) {
        silence(view, dnode.outer);
        discard(dnode.outer);
    }
    view.nodes.erase(entry);
}

void forget_descendants(ViewState& view, const DNode& top) {
    const std::string prefix = *top.path + "/";
    std::vector<NodeMap::iterator> doomed;
    for (auto at = view.nodes.lower_bound(prefix);
         at != view.nodes.end() && at->first.starts_with(prefix); ++at)
        if (is_below(at->second, top)) {
            doomed.push_back(at);
            if (view.overlays.modals.contains(at->first))
                silence(view, at->second.outer);
        }
    // Children first: each still finds its parents.
    for (auto entry = doomed.rbegin(); entry != doomed.rend(); ++entry)
        forget_node(view, *entry);
}

/// Makes the subtree and puts it at `index` in its parent, or in the window.
void add_subtree(ViewState& view, const RenderPatch& patch, DNode* parent) {
    const RenderNode& node = patch.node;
    if (is_modal(node)) {
        create_modal(view, node, parent);
        return;
    }
    ModalNodes modals;
    DNode& dnode = create_subtree(view, node, parent, modals);
    if (patch.parent_path->empty() && !parent) {
        view.root_layout->addWidget(dnode.outer);
        dnode.outer->setVisible(true);
    } else if (parent && parent->layout) {
        pause_layout(view, parent->layout);
        insert_child(*parent, dnode, patch.index, node.style);
        dnode.outer->setVisible(true);
    }
    float_overlays(view, node);
    if (parent)
        view.queue.unbalanced.insert(parent);
    create_modals(view, modals);
}

} // namespace

void add_node(ViewState& view, const RenderPatch& patch) {
    add_subtree(view, patch, parent_record(view, patch));
}

void replace_node(ViewState& view, const RenderPatch& patch) {
    // A name with a slash in it leaves the patch with a wrong parent path; the record knows.
    const DNode* old = view.find(patch.path);
    DNode* parent = old && old->parent ? old->parent : parent_record(view, patch);
    remove_node(view, patch.path);
    add_subtree(view, patch, parent);
}

void remove_node(ViewState& view, const std::string& path) {
    const auto entry = view.nodes.find(path);
    if (entry == view.nodes.end()) {
        close_modal(view, path);
        return;
    }
    DNode& dnode = entry->second;
    QWidget* outer = dnode.outer;
    DNode* parent = dnode.parent;
    silence(view, outer);
    close_modal(view, path);
    leave_host(view, dnode);
    forget_descendants(view, dnode);
    view.by_outer.erase(outer);
    view.queue.unbalanced.erase(&dnode);
    view.nodes.erase(entry);
    // A layout that is switched off does not notice that a widget leaves.
    if (parent && parent->layout)
        parent->layout->removeWidget(outer);
    discard(outer);
    if (parent)
        view.queue.unbalanced.insert(parent);
}

void forget_all_nodes(ViewState& view) {
    for (EditorWidget* editor : std::exchange(view.editors, {}))
        editor->muted = true;
    for (const auto& [path, dnode] : view.nodes)
        if (!dnode.outer->parentWidget())
            dnode.outer->deleteLater();
    view.nodes.clear();
    view.queue.unbalanced.clear();
    view.overlays.modals.clear();
    view.overlays.floating.clear();
    view.by_outer.clear();
    view.overlays.waiting_modals.clear();
    view.bars.scroll_values.clear();
    view.bars.themed.clear();
}

void resume_layouts(ViewState& view) {
    for (DNode* parent : std::exchange(view.queue.unbalanced, {}))
        rebalance_stretches(*parent);
    for (const QPointer<QLayout>& layout : std::exchange(view.queue.paused_layouts, {}))
        if (layout) {
            layout->setEnabled(true);
            layout->activate();
        }
}

} // namespace Corvel
