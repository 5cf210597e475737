#pragma once

#include "runtime/render_node.h"

#include <memory>
#include <string>
#include <vector>

class QWidget;

namespace Corvel {

class CorvelApp;
struct ViewState;

/// Shows an application's render tree as live widgets and keeps them current.
///
/// The view never rebuilds: it applies the patches between two renders, so that a widget keeps its
/// focus, caret, scroll position and running animations for as long as its node exists. What the
/// user does goes to `CorvelApp::dispatch_event`, followed by a render.
///
/// All calls belong to the thread of the application's event loop. `app` must outlive the view and
/// the window. Problems are silent: a patch for an unknown node does nothing.
class DesktopView {
public:
    explicit DesktopView(CorvelApp& app);
    /// Deletes the window if it still exists.
    ~DesktopView();
    DesktopView(const DesktopView&) = delete;
    DesktopView& operator=(const DesktopView&) = delete;

    /// Makes the window with the first render in it, hidden, and from then on follows the
    /// application. Called once. The window is the caller's to show and may be deleted before the
    /// view. Flags and attributes can still be set on it; modal windows wait until it is shown.
    QWidget* build();

    /// Applies patches in their order. A call from within another is put behind it.
    void apply_patches(const std::vector<RenderPatch>& patches);

    /// Renders once control is back in the event loop; any number of requests until then cost one
    /// render.
    void schedule_render();

    /// Makes at once what a long list has left until it is painted.
    void finish();

    /// The widget of a node without its margin and width wrappers, null if there is no such node.
    QWidget* widget_at(const std::string& path) const;

private:
    friend class ViewProbe;
    std::unique_ptr<ViewState> state_;
};

} // namespace Corvel
