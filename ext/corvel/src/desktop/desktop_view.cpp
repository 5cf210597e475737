#include "desktop/desktop_view.h"

#include "desktop/desktop_view_p.h"
#include "desktop/focus.h"
#include "desktop/node_tree.h"
#include "desktop/node_update.h"
#include "desktop/overlays.h"
#include "desktop/scroll_host.h"
#include "desktop/strip.h"
#include "desktop/tab_order.h"
#include "desktop/theme_palette.h"
#include "desktop/video_selection.h"
#include "desktop/widgets/editor_widget.h"
#include "desktop/widgets/root_container.h"
#include "desktop/widgets/vbox_widget.h"
#include "desktop/window_keys.h"
#include "runtime/corvel_app.h"

#include <QKeyEvent>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>
#include <utility>

namespace Corvel {

namespace {

/// A batch that has made so many nodes, a matter of some 50 ms, leaves all but the first children
/// of a long list to later batches.
constexpr std::size_t NODES_AT_ONCE = 1000;
constexpr std::size_t FIRST_CHILDREN = 40;
/// Time in which the window is painted between two batches.
constexpr int PAINT_PAUSE_MS = 16;

/// The window of a view. It tells when it is shown, and when it is about to go, while its widgets
/// are still whole.
class ViewRoot final : public RootContainer {
public:
    ~ViewRoot() override {
        if (on_closing)
            on_closing();
    }

    std::function<void()> on_shown;
    std::function<void()> on_closing;
    std::function<bool(const QKeyEvent&)> on_key; ///< whether the key meant something

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (!on_key || !on_key(*event))
            RootContainer::keyPressEvent(event);
    }

    void showEvent(QShowEvent* event) override {
        RootContainer::showEvent(event);
        if (on_shown)
            on_shown();
    }
};

/// While patches are applied every change of focus is of the view's making, so that no field may
/// report anything; and no render starts within another.
class ApplyScope {
public:
    explicit ApplyScope(ViewState& view)
        : view_(view) {
        view_.queue.applying = true;
        mute(true);
    }
    ~ApplyScope() {
        mute(false);
        view_.queue.applying = false;
    }
    ApplyScope(const ApplyScope&) = delete;
    ApplyScope& operator=(const ApplyScope&) = delete;

private:
    void mute(bool on) {
        for (EditorWidget* editor : view_.editors)
            editor->muted = on;
    }
    ViewState& view_;
};

void apply_patch(ViewState& view, const RenderPatch& patch) {
    switch (patch.kind) {
    case PatchKind::Add:
        add_node(view, patch);
        break;
    case PatchKind::Remove:
        remove_node(view, patch.path);
        break;
    case PatchKind::Update:
        update_node(view, patch);
        break;
    case PatchKind::Replace:
        replace_node(view, patch);
        break;
    case PatchKind::SetEditorText:
        set_editor_text(view, patch);
        break;
    }
}

void apply_batch(ViewState& view, const std::vector<RenderPatch>& patches) {
    view.queue.nodes_made = 0;
    for (auto patch = patches.begin(); patch != patches.end(); ++patch) {
        if (patch->kind == PatchKind::Add && view.put_off(static_cast<std::size_t>(patch->index))) {
            // The rest may build on it.
            view.queue.later.insert(view.queue.later.end(), patch, patches.end());
            break;
        }
        apply_patch(view, *patch);
    }
    resume_layouts(view);
    name_modals(view);
    renew_tab_order(view);
    reveal_active_children(view);
    position_overlays(view);
}

void apply_all(ViewState& view, const std::vector<RenderPatch>& patches) {
    const ApplyScope scope(view);
    FocusPlace focus(view);
    apply_batch(view, patches);
    while (!view.queue.waiting.empty()) {
        std::vector<RenderPatch> batch = std::exchange(view.queue.later, {});
        batch.insert(batch.end(), view.queue.waiting.begin(), view.queue.waiting.end());
        view.queue.waiting.clear();
        apply_batch(view, batch);
    }
    focus_opened_dialogs(view);
    focus.restore();
}

void catch_up(ViewState& view) {
    if (view.queue.later.empty())
        return;
    view.queue.catching_up = true;
    apply_all(view, std::exchange(view.queue.later, {}));
    view.queue.catching_up = false;
}

bool lies_below(const std::string& path, const std::string& above) {
    return path.size() > above.size() && path.starts_with(above) && path[above.size()] == '/';
}

/// Takes out of what was put off the nodes that go before they were made.
void drop_doomed(ViewState& view, const std::vector<RenderPatch>& patches) {
    std::unordered_set<const DNode*> doomed;
    for (const RenderPatch& patch : patches)
        if (patch.kind == PatchKind::Remove || patch.kind == PatchKind::Replace)
            doomed.insert(view.find(patch.path));
    doomed.erase(nullptr);
    const auto goes = [&](const RenderPatch& waiting) {
        const DNode* above = view.find(waiting.parent_path);
        while (above && !doomed.contains(above))
            above = above->parent;
        return waiting.kind == PatchKind::Add && above;
    };
    if (!doomed.empty())
        std::erase_if(view.queue.later, goes);
}

/// Whether patches concern a place where nodes are still to be made.
bool meet_what_waits(const ViewState& view, const std::vector<RenderPatch>& patches) {
    std::set<std::string> places;
    for (const RenderPatch& waiting : view.queue.later) {
        if (waiting.kind != PatchKind::Add)
            return true;
        places.insert(waiting.parent_path);
    }
    const auto meets = [&](const RenderPatch& patch) {
        return std::any_of(places.begin(), places.end(), [&](const std::string& place) {
            return patch.path == place || lies_below(patch.path, place) ||
                   lies_below(place, patch.path);
        });
    };
    return std::any_of(patches.begin(), patches.end(), meets);
}

void follow_width(ViewState& view, int width) {
    resize_scrims(view);
    const bool width_state = view.app->set_viewport_width(width);
    const bool height_state = view.app->set_viewport_height(view.root->height());
    if (width_state || height_state)
        view.render_now();
    position_overlays(view);
}

void follow_maximized(ViewState& view, bool on) {
    if (view.app->set_maximized(on))
        view.render_now();
}

/// The window goes: nothing may reach its widgets any more.
void detach(ViewState& view) {
    view.app->on_async_change = nullptr;
    view.root->on_width_changed = nullptr;
    view.root->on_maximized_changed = nullptr;
    view.queue.later.clear();
    forget_all_nodes(view);
    view.root = nullptr;
}

} // namespace

bool is_below(const DNode& node, const DNode& ancestor) {
    for (const DNode* above = node.parent; above; above = above->parent)
        if (above == &ancestor)
            return true;
    return false;
}

DNode* ViewState::find(const std::string& path) {
    const auto entry = nodes.find(path);
    return entry == nodes.end() ? nullptr : &entry->second;
}

DNode* ViewState::find_dnode_by_widget(const QWidget* widget) const {
    const auto entry = by_outer.find(widget);
    return entry == by_outer.end() ? nullptr : entry->second;
}

void ViewState::render_now() {
    // Placing overlays resizes what scrolls in them, which may ask for a render as well.
    if (queue.applying || overlays.positioning)
        schedule_render();
    else
        apply(app->render_patches());
}

void ViewState::schedule_render() {
    if (render_pending || !root)
        return;
    render_pending = true;
    QTimer::singleShot(0, root, [this] {
        render_pending = false;
        render_now();
    });
}

void ViewState::apply(const std::vector<RenderPatch>& patches) {
    if (!root)
        return;
    if (queue.applying) {
        queue.waiting.insert(queue.waiting.end(), patches.begin(), patches.end());
        return;
    }
    follow_theme_palette(*this);
    theme_scroll_bars(*this);
    if (patches.empty()) {
        position_overlays(*this);
    } else {
        drop_doomed(*this, patches);
        if (meet_what_waits(*this, patches))
            catch_up(*this);
        std::vector<RenderPatch> earlier = std::exchange(queue.later, {});
        apply_all(*this, patches);
        queue.later.insert(queue.later.begin(), std::make_move_iterator(earlier.begin()),
                           std::make_move_iterator(earlier.end()));
        schedule_later();
    }
    schedule_video_check(*this);
}

bool ViewState::put_off(std::size_t index) const {
    return queue.nodes_made >= NODES_AT_ONCE && index >= FIRST_CHILDREN && !queue.catching_up &&
           root->isVisible();
}

void ViewState::schedule_later() {
    if (queue.later.empty())
        return;
    QTimer::singleShot(PAINT_PAUSE_MS, root, [this] {
        if (queue.later.empty() || queue.applying)
            return;
        apply_all(*this, std::exchange(queue.later, {}));
        schedule_later();
        schedule_video_check(*this);
    });
}

bool ViewState::dispatch(const std::string& path, const std::string& event) {
    const QPointer<QWidget> window(root);
    app->dispatch_event(path, event);
    return !window.isNull();
}

void ViewState::click(const std::string& path) {
    if (!dispatch(path, "click"))
        return;
    render_now();
    // A tick need not change the node's own style.
    if (DNode* dnode = find(path); dnode && dnode->kind == NodeKind::CheckBox)
        dnode->box->set_checked(app->is_checked(path));
}

DesktopView::DesktopView(CorvelApp& app)
    : state_(std::make_unique<ViewState>(app)) {}

DesktopView::~DesktopView() {
    delete state_->root;
}

QWidget* DesktopView::build() {
    ViewState& view = *state_;
    auto* root = new ViewRoot;
    root->on_closing = [&view] { detach(view); };
    root->on_shown = [&view] {
        // The window is not on the screen before the event is through.
        if (!view.overlays.waiting_modals.empty())
            QTimer::singleShot(0, view.root, [&view] { open_waiting_modals(view); });
    };
    root->on_key = [&view](const QKeyEvent& event) {
        return press_window_key(view, view.root, event);
    };
    view.root = root;
    view.root_layout = new QVBoxLayout(root);
    view.root_layout->setContentsMargins(0, 0, 0, 0);
    view.apply(view.app->render_patches());
    root->on_width_changed = [&view](int width) { follow_width(view, width); };
    root->on_maximized_changed = [&view](bool on) { follow_maximized(view, on); };
    view.app->on_async_change = [&view] { view.schedule_render(); };
    return root;
}

void DesktopView::apply_patches(const std::vector<RenderPatch>& patches) {
    state_->apply(patches);
}

void DesktopView::schedule_render() {
    state_->schedule_render();
}

void DesktopView::finish() {
    if (!state_->queue.applying)
        catch_up(*state_);
}

QWidget* DesktopView::widget_at(const std::string& path) const {
    // Whoever asks for a node of the tree finds it, also one that is still to be made.
    if (!state_->find(path))
        const_cast<DesktopView*>(this)->finish();
    const DNode* dnode = state_->find(path);
    return dnode ? dnode->widget : nullptr;
}

} // namespace Corvel
