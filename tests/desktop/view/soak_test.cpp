#include "desktop/max_width_container.h"
#include "desktop/widgets/icon_widget.h"
#include "desktop/widgets/markdown_widget.h"
#include "desktop/widgets/media_widget.h"
#include "desktop/widgets/qr_widget.h"
#include "random_tree.h"
#include "runtime/render_diff.h"
#include "view_fixture.h"

#include <QApplication>

#include <algorithm>
#include <cstdlib>
#include <set>

namespace ViewTest {
namespace {

/// How many patches the run applies; an environment variable asks for a long run.
int wanted_patches() {
    const char* set = std::getenv("VIEW_SOAK_PATCHES");
    return set ? std::atoi(set) : 600;
}

template <class T>
std::size_t alive() {
    const QWidgetList all = QApplication::allWidgets();
    return static_cast<std::size_t>(std::count_if(
        all.begin(), all.end(), [](QWidget* widget) { return qobject_cast<T*>(widget); }));
}

class ViewSoak : public ViewFixture {
protected:
    /// Applies what leads to `next`, with a text pushed into some editor now and then.
    void go_to(RenderNode next) {
        std::vector<RenderPatch> patches;
        diff_nodes(tree, next, SiblingNames::MayRepeat, patches);
        if (random.one_in(5))
            patches.push_back(editor_text(random.node_of(next).path, random.word()));
        tree = std::move(next);
        applied += static_cast<int>(patches.size());
        apply(patches);
    }

    /// What a user and the system do between two renders.
    void disturb() {
        if (random.one_in(4))
            window->resize(random.number(200, 900), random.number(100, 700));
        if (random.one_in(10) && !state.editors.empty()) {
            EditorWidget* field = *state.editors.begin();
            if (field->isVisible() && !field->multiline) {
                field->line_edit->setFocus();
                QTest::keyClick(field->line_edit, random.one_in(2) ? Qt::Key_X : Qt::Key_Backspace);
            }
        }
        if (random.one_in(6))
            QTest::qWait(random.number(1, 40));
        settle();
    }

    void check() {
        std::set<std::string> paths;
        check_node(tree, nullptr, 1.0, paths);
        EXPECT_EQ(state.nodes.size(), paths.size());
        check_counts();
    }

    void check_node(const RenderNode& node, const DNode* parent, double opacity,
                    std::set<std::string>& paths) {
        SCOPED_TRACE(node.path.get());
        paths.insert(node.path);
        const DNode* dnode = state.find(node.path);
        ASSERT_NE(dnode, nullptr);
        ASSERT_EQ(dnode->kind, node.kind);
        EXPECT_EQ(dnode->parent, parent);
        kinds.insert(node.kind);
        EXPECT_EQ(dnode->widget->objectName().toStdString(), node.name.get());
        EXPECT_EQ(dnode->effective_opacity, opacity * node.style->opacity);
        check_content(node, *dnode);
        check_place(node, *dnode);
        std::size_t in_layout = dnode->label && dnode->layout ? 1 : 0;
        int floating = 0;
        for (const RenderNode& child : node.children) {
            check_node(child, dnode, dnode->effective_opacity, paths);
            const DNode* made = state.find(child.path);
            if (made->bar_floating || made->side_floating)
                ++floating;
            else if (dnode->layout && !state.modals.contains(child.path))
                ++in_layout;
        }
        EXPECT_EQ(dnode->floating_children, floating);
        if (dnode->layout) {
            EXPECT_EQ(laid_out(node.path).size(), in_layout);
        }
    }

    void check_content(const RenderNode& node, const DNode& dnode) {
        if (dnode.box) {
            EXPECT_TRUE(dnode.box->style == node.style);
        }
        if (dnode.label) {
            EXPECT_EQ(dnode.label->text().toStdString(), node.text.get());
        }
        if (dnode.editor) {
            EXPECT_EQ(dnode.editor->wanted_text.toStdString(), node.text.get());
        }
        if (dnode.combo) {
            EXPECT_TRUE(dnode.combo->items == node.items.get());
        }
        if (dnode.icon) {
            EXPECT_EQ(dnode.icon->color, node.style->text_color);
        }
        if (dnode.qr) {
            EXPECT_EQ(dnode.qr->data, node.style->data);
        }
        if (dnode.markdown) {
            EXPECT_EQ(dnode.markdown->text.toStdString(), node.text.get());
        }
        EXPECT_EQ(dnode.scroll_area != nullptr, dnode.layout && !node.style->layout_scroll.empty());
    }

    /// A node stands in its parent's layout, or floats, or is a window, or lies apart.
    void check_place(const RenderNode& node, const DNode& dnode) {
        const bool floats = dnode.bar_floating || dnode.side_floating;
        EXPECT_EQ(state.floating.contains(node.path), floats);
        if (state.modals.contains(node.path)) {
            places.insert("window");
            EXPECT_NE(dnode.widget->window(), window.get());
            EXPECT_FALSE(floats);
        } else if (floats) {
            places.insert(dnode.bar_floating ? "bar" : "side");
            EXPECT_EQ(dnode.outer->parentWidget(), dnode.parent->box);
        } else if (dnode.parent && !dnode.parent->layout) {
            places.insert("apart");
            EXPECT_EQ(dnode.outer->parentWidget(), nullptr);
        } else if (dnode.parent) {
            EXPECT_GE(dnode.parent->layout->indexOf(dnode.outer), 0);
        }
        if (node.style->overlay.empty()) {
            EXPECT_FALSE(dnode.bar_floating);
        }
        if (dnode.layout) {
            EXPECT_EQ(dnode.layout->contentsMargins().bottom(),
                      dnode.inset_bottom + dnode.reserved_bottom);
        }
        QWidget* chain = dnode.widget;
        while (chain != dnode.outer && chain)
            chain = chain->parentWidget();
        EXPECT_EQ(chain, dnode.outer);
    }

    /// No widget is left over, and none opened on its own.
    void check_counts() {
        std::size_t boxes = 0, labels = 0, icons = 0, containers = 0, areas = 0;
        for (const auto& [path, dnode] : state.nodes) {
            boxes += (dnode.box ? 1 : 0) + (dnode.side_scrim ? 1 : 0);
            labels += dnode.label ? 1 : 0;
            icons += dnode.icon || (dnode.editor && dnode.editor->prefix_icon) ? 1 : 0;
            containers += qobject_cast<MaxWidthContainer*>(dnode.outer) ? 1 : 0;
            areas += dnode.scroll_area ? 1 : 0;
        }
        EXPECT_EQ(alive<VBoxWidget>(), boxes);
        EXPECT_EQ(alive<WrapLabel>(), labels);
        EXPECT_EQ(alive<IconWidget>(), icons);
        EXPECT_EQ(alive<MaxWidthContainer>(), containers);
        EXPECT_EQ(alive<QScrollArea>(), areas);
        EXPECT_EQ(alive<MediaWidget>(), state.videos.size() + alive_images());
        std::size_t windows = 0;
        for (QWidget* top : QApplication::topLevelWidgets())
            windows += top->isVisible() ? 1 : 0;
        EXPECT_EQ(windows, 1 + state.modals.size());
    }

    std::size_t alive_images() {
        return static_cast<std::size_t>(
            std::count_if(state.nodes.begin(), state.nodes.end(),
                          [](const auto& entry) { return entry.second.kind == NodeKind::Image; }));
    }

    RandomTree random{20240229};
    RenderNode tree;
    int applied = 0;
    std::set<NodeKind> kinds; ///< that were on screen at some time
    std::set<std::string> places;
};

TEST_F(ViewSoak, RandomPatchesLeaveTheWidgetsAsTheTreeSays) {
    tree = at("", box("App"));
    show(tree);
    const int wanted = wanted_patches();
    for (int batch = 0; applied < wanted && !HasFailure(); ++batch) {
        SCOPED_TRACE("batch " + std::to_string(batch));
        RenderNode next = tree;
        for (int change = random.number(1, 6); change > 0; --change)
            random.change(next);
        if (random.one_in(20))
            random.recolour(next);
        go_to(at("", std::move(next)));
        disturb();
        check();
    }
    EXPECT_EQ(kinds.size(), 14U);
    EXPECT_EQ(places, (std::set<std::string>{"apart", "bar", "side", "window"}));
    apply({removal("App")});
    settle();
    EXPECT_TRUE(state.nodes.empty() && state.floating.empty() && state.by_outer.empty() &&
                state.modals.empty() && state.editors.empty() && state.videos.empty() &&
                state.scroll_values.empty() && state.themed_bars.empty());
    EXPECT_EQ(window->findChildren<QWidget*>().size(), 0);
}

} // namespace
} // namespace ViewTest
