#pragma once

#include "desktop/node_record.h"
#include "runtime/render_node.h"

#include <QPointer>
#include <QString>

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class QLayout;
class QScrollArea;
class QScrollBar;
class QVBoxLayout;
class QWidget;

namespace Corvel {

class CorvelApp;
class RootContainer;
class VideoWidget;

/// Ordered by the bytes of the path: the descendants of a path lie in the run that starts at path +
/// "/". A row's id may hold slashes, so the run can also hold nodes of other rows.
using NodeMap = std::map<std::string, DNode>;

/// Patches that are being applied, and those that wait for it (the commit of a reconciler).
struct PatchQueue {
    bool applying = false;
    std::vector<RenderPatch> waiting;              ///< came in meanwhile
    std::vector<RenderPatch> later;                ///< put off, see `ViewState::put_off`
    std::size_t nodes_made = 0;                    ///< by the batch under way
    bool catching_up = false;                      ///< `later` is made without a pause
    std::vector<QPointer<QLayout>> paused_layouts; ///< laid out once, after the patches
    std::unordered_set<DNode*> unbalanced;         ///< stretches are shared out anew, once as well
};

/// A top-level window and what dims the windows under it.
struct ModalWindow {
    QPointer<QWidget> window;
    QPointer<QWidget> scrim;               ///< over the main window
    std::vector<QPointer<QWidget>> shades; ///< over the dialogs below this one
};

/// Everything that lies above the rest.
struct Overlays {
    std::set<std::string> floating; ///< paths of the bars and sides
    bool positioning = false;       ///< they are being placed
    std::map<std::string, ModalWindow> modals;
    std::vector<std::string> waiting_modals; ///< open once the root is shown
    std::vector<std::string> opened_modals;  ///< by the patches under way
};

/// The scroll bars of scrolling boxes.
struct ScrollBars {
    std::map<QScrollBar*, int> scroll_values;   ///< last value seen of each vertical bar
    std::unordered_set<QScrollBar*> themed;     ///< every bar of a scrolling box
    std::string color;                          ///< the theme's colour in their sheets
    std::map<QScrollArea*, std::string> strips; ///< path of the active child last shown
};

struct Videos {
    std::vector<VideoWidget*> all; ///< in order of creation
    bool check_pending = false;
};

/// The colours of a theme as it writes them.
struct ThemeColors {
    std::string primary;
    std::string secondary;
    std::string tertiary;
    std::string foreground;

    friend bool operator==(const ThemeColors&, const ThemeColors&) = default;
};

/// What the parts of the view share.
struct ViewState {
    explicit ViewState(CorvelApp& application)
        : app(&application) {}

    CorvelApp* app;
    QPointer<RootContainer> root;
    QVBoxLayout* root_layout = nullptr;
    NodeMap nodes;
    std::unordered_map<const QWidget*, DNode*> by_outer; ///< record by its `outer`
    bool render_pending = false;
    PatchQueue queue;
    Overlays overlays;
    ScrollBars bars;
    Videos videos;
    ThemeColors palette;                       ///< that the application's palette shows
    std::unordered_set<EditorWidget*> editors; ///< alive and not about to go
    bool tab_order_stale = false;              ///< fields came or moved

    DNode* find(const std::string& path);
    /// The record whose `outer` is `widget`, null if there is none.
    DNode* find_dnode_by_widget(const QWidget* widget) const;

    /// Renders and applies, or asks for a render later while patches are being applied or overlays
    /// placed.
    void render_now();
    void schedule_render();
    void apply(const std::vector<RenderPatch>& patches);
    /// Whether the child at `index` of its parent is to be made after the next paint: the batch has
    /// made many nodes already, and a long list shows its beginning first. What is put off goes to
    /// `later`, in order, and comes by itself or before the next patches.
    bool put_off(std::size_t index) const;
    void schedule_later();
    /// Runs the application's handlers for an event. False if the window is gone afterwards, and
    /// this record possibly with it.
    bool dispatch(const std::string& path, const std::string& event);
    /// A press on a node: the event, then a render on the same stack.
    void click(const std::string& path);
};

/// Calls `visit` with each record below `top`, parents before children.
template <class Visit>
void for_each_below(NodeMap& nodes, const DNode& top, Visit visit) {
    const std::string prefix = *top.path + "/";
    for (auto at = nodes.lower_bound(prefix);
         at != nodes.end() && at->first.compare(0, prefix.size(), prefix) == 0; ++at)
        if (is_below(at->second, top))
            visit(at->second);
}

inline QString qt_text(const std::string& text) {
    return QString::fromStdString(text);
}

} // namespace Corvel
