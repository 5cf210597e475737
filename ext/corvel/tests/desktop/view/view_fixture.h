#pragma once

#include "desktop/desktop_view.h"
#include "desktop/desktop_view_p.h"
#include "desktop/widgets/combo_widget.h"
#include "desktop/widgets/editor_widget.h"
#include "desktop/widgets/root_container.h"
#include "desktop/widgets/vbox_widget.h"
#include "desktop/widgets/wrap_label.h"
#include "runtime/corvel_app.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QBoxLayout>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Corvel {

/// The inside of a view.
class ViewProbe {
public:
    static ViewState& state(DesktopView& view) { return *view.state_; }
};

} // namespace Corvel

namespace ViewTest {

using namespace Corvel;

/// A node without a path; the patch that carries it gives it one.
inline RenderNode node(NodeKind kind, const std::string& name, NodeStyle style = {},
                       std::vector<RenderNode> children = {}, const std::string& text = {}) {
    return {kind, name, {}, text, std::move(style), {}, {}, std::move(children)};
}

inline RenderNode box(const std::string& name, NodeStyle style = {},
                      std::vector<RenderNode> children = {}) {
    return node(NodeKind::Box, name, std::move(style), std::move(children));
}

inline RenderNode text(const std::string& name, const std::string& words, NodeStyle style = {}) {
    return node(NodeKind::Text, name, std::move(style), {}, words);
}

inline RenderNode editor(const std::string& name, const std::string& words = {},
                         NodeStyle style = {}) {
    return node(NodeKind::Editor, name, std::move(style), {}, words);
}

/// The node with its path below `parent`, and its descendants' with it.
inline RenderNode at(const std::string& parent, RenderNode made) {
    made.path = parent.empty() ? made.name.get() : parent + "/" + made.name.get();
    for (RenderNode& child : made.children)
        child = at(made.path, std::move(child));
    return made;
}

inline RenderPatch add(const std::string& parent, RenderNode made, int index = 0,
                       PatchKind kind = PatchKind::Add) {
    made = at(parent, std::move(made));
    return {kind, made.path, parent, index, made};
}

inline RenderPatch replace(const std::string& parent, RenderNode made) {
    return add(parent, std::move(made), 0, PatchKind::Replace);
}

inline RenderPatch update(const std::string& parent, RenderNode made) {
    made.children.clear();
    return add(parent, std::move(made), 0, PatchKind::Update);
}

inline RenderPatch removal(const std::string& path) {
    return {.kind = PatchKind::Remove, .path = path};
}

inline RenderPatch editor_text(const std::string& path, const std::string& words) {
    return {.kind = PatchKind::SetEditorText, .path = path, .node = text("", words)};
}

/// Runs what was posted, deferred deletions too.
inline void settle() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

/// A view of an application without styles, driven by hand-made patches: its own renders give
/// none.
class ViewFixture : public testing::Test {
protected:
    ViewFixture() { view.apply_patches({removal("")}); }

    void apply(const std::vector<RenderPatch>& patches) {
        view.apply_patches(patches);
        settle();
    }

    /// Puts a tree named "App" in the window, 600 by 400, and shows it.
    void show(RenderNode root) {
        apply({removal("App"), add("", std::move(root))});
        window->resize(600, 400);
        window->show();
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
        settle();
    }

    template <class T>
    T* widget(const std::string& path) {
        T* found = qobject_cast<T*>(view.widget_at(path));
        EXPECT_NE(found, nullptr) << path;
        return found;
    }
    QLineEdit* line(const std::string& path) { return widget<EditorWidget>(path)->line_edit; }
    DNode& record(const std::string& path) { return *state.find(path); }
    /// A node's widget, or with "~" behind the path its scrim.
    QWidget* widget_at(const std::string& path) {
        return path.ends_with("~") ? record(path.substr(0, path.size() - 1)).overlay.scrim
                                   : view.widget_at(path);
    }
    /// Where it lies in the window.
    QRect place(const std::string& path) {
        QWidget* shown = widget_at(path);
        return {shown->mapTo(window.get(), QPoint()), shown->size()};
    }
    void press(const std::string& path) { QTest::mousePress(view.widget_at(path), Qt::LeftButton); }
    /// The object names of what stands in a node's layout, in order.
    std::vector<std::string> laid_out(const std::string& path) {
        std::vector<std::string> names;
        QBoxLayout* layout = record(path).layout;
        for (int index = 0; index < layout->count(); ++index)
            if (QWidget* outer = layout->itemAt(index)->widget()) {
                const DNode* dnode = state.find_dnode_by_widget(outer);
                names.push_back(dnode ? dnode->widget->objectName().toStdString() : "(caption)");
            }
        return names;
    }

    /// Waits for the end of a fold or slide.
    bool still(const std::string& path) {
        return QTest::qWaitFor(
            [&] { return !record(path).overlay.sliding && !record(path).fold.animation; });
    }
    static long windows() {
        const QWidgetList all = QApplication::topLevelWidgets();
        return std::count_if(all.begin(), all.end(), [](QWidget* top) { return top->isVisible(); });
    }

    CorvelApp app;
    DesktopView view{app};
    std::unique_ptr<QWidget> window{view.build()};
    ViewState& state = ViewProbe::state(view);
};

} // namespace ViewTest
