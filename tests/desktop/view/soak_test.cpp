#include "desktop/max_width_container.h"
#include "desktop/widgets/icon_widget.h"
#include "random_tree.h"
#include "runtime/render_diff.h"

#include <QApplication>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>

namespace ViewTest {
namespace {

/// How many patches the run applies; an environment variable asks for a long run.
int wanted_patches() {
    const char* set = std::getenv("VIEW_SOAK_PATCHES");
    return set ? std::atoi(set) : 600;
}

class ViewSoak : public ViewFixture {
protected:
    /// Applies what leads to `next`, with a text pushed into some node now and then.
    void go_to(RenderNode next) {
        std::vector<RenderPatch> patches;
        diff_nodes(tree, next, SiblingNames::MayRepeat, patches);
        if (random.one_in(5))
            patches.push_back(editor_text(random.node_of(next).path, random.word()));
        tree = std::move(next);
        applied += static_cast<int>(patches.size());
        view.apply_patches(patches);
    }

    /// What a user and the system do between two renders.
    void disturb() {
        if (random.one_in(4))
            window->resize(random.number(200, 900), random.number(100, 700));
        EditorWidget* field = state.editors.empty() ? nullptr : *state.editors.begin();
        if (random.one_in(10) && field && field->isVisible() && !field->multiline) {
            field->line_edit->setFocus();
            QTest::keyClick(field->line_edit, random.one_in(2) ? Qt::Key_X : Qt::Key_Backspace);
        }
        if (random.one_in(6))
            QTest::qWait(random.number(1, 40)); // in the middle of a slide
        settle();
    }

    void check_node(const RenderNode& node, const DNode* parent) {
        SCOPED_TRACE(node.path.get());
        ++checked;
        const DNode* dnode = state.find(node.path);
        ASSERT_TRUE(dnode && dnode->kind == node.kind && dnode->parent == parent);
        seen.insert("kind " + std::to_string(static_cast<int>(node.kind)));
        EXPECT_EQ(dnode->widget->objectName().toStdString(), node.name.get());
        const double opacity = node.style->opacity * (parent ? parent->effective_opacity : 1);
        EXPECT_EQ(dnode->effective_opacity, opacity);
        EXPECT_TRUE(!dnode->box || dnode->box->opacity == opacity);
        EXPECT_TRUE(!dnode->box || dnode->box->style == node.style);
        EXPECT_TRUE(!dnode->label || dnode->label->text().toStdString() == node.text.get());
        EXPECT_TRUE(!dnode->editor || dnode->editor->wanted_text.toStdString() == node.text.get());
        EXPECT_TRUE(!dnode->combo || dnode->combo->items == node.items.get());
        EXPECT_TRUE(!dnode->icon || dnode->icon->color == node.style->text_color);
        EXPECT_EQ(dnode->scroll_area != nullptr,
                  dnode->layout && !node.style->layout_scroll.empty());
        check_place(node, *dnode);
        std::size_t in_layout = dnode->label ? 1 : 0;
        for (const RenderNode& child : node.children) {
            check_node(child, dnode);
            in_layout += !state.floating.contains(child.path) && !state.modals.contains(child.path);
        }
        EXPECT_TRUE(!dnode->layout || laid_out(node.path).size() == in_layout);
    }

    /// A node stands in its parent's layout, or floats, or is a window, or lies apart.
    void check_place(const RenderNode& node, const DNode& dnode) {
        EXPECT_TRUE(dnode.outer == dnode.widget || dnode.outer->isAncestorOf(dnode.widget));
        EXPECT_EQ(state.floating.contains(node.path), dnode.bar_floating || dnode.side_floating);
        if (state.modals.contains(node.path)) {
            seen.insert("window");
            EXPECT_NE(dnode.widget->window(), window.get());
        } else if (state.floating.contains(node.path)) {
            seen.insert(dnode.bar_floating ? "bar" : "side");
            EXPECT_EQ(dnode.outer->parentWidget(), dnode.parent->box);
        } else if (dnode.parent && !dnode.parent->layout) {
            seen.insert("apart");
            EXPECT_EQ(dnode.outer->parentWidget(), nullptr);
        } else if (dnode.parent) {
            EXPECT_GE(dnode.parent->layout->indexOf(dnode.outer), 0);
        }
        EXPECT_TRUE(!dnode.layout || dnode.layout->contentsMargins().bottom() ==
                                         dnode.inset_bottom + dnode.reserved_bottom);
    }

    /// No widget is left over, and none opened on its own.
    void check_counts() {
        EXPECT_EQ(state.nodes.size(), checked);
        std::map<std::string, long> wanted, alive;
        for (const auto& [path, dnode] : state.nodes) {
            ++wanted[dnode.widget->metaObject()->className()];
            wanted["Corvel::VBoxWidget"] += dnode.side_scrim != nullptr;
            wanted["Corvel::WrapLabel"] += dnode.label && dnode.label != dnode.widget;
            wanted["Corvel::IconWidget"] += dnode.editor && dnode.editor->prefix_icon;
            wanted["QScrollArea"] += dnode.scroll_area != nullptr;
            wanted["Corvel::MaxWidthContainer"] +=
                qobject_cast<MaxWidthContainer*>(dnode.outer) != nullptr;
        }
        for (QWidget* widget : QApplication::allWidgets()) {
            ++alive[widget->metaObject()->className()];
            alive["windows"] += widget->isWindow() && widget->isVisible();
        }
        wanted["windows"] = 1 + static_cast<long>(state.modals.size());
        for (const auto& [class_name, count] : wanted)
            EXPECT_EQ(alive[class_name], count) << class_name;
    }

    RandomTree random;
    RenderNode tree = at("", box("App"));
    int applied = 0;
    std::size_t checked = 0;
    std::set<std::string> seen; ///< kinds and places that were on screen at some time
};

TEST_F(ViewSoak, RandomPatchesLeaveTheWidgetsAsTheTreeSays) {
    show(tree);
    while (applied < wanted_patches() && !HasFailure()) {
        SCOPED_TRACE("after " + std::to_string(applied) + " patches");
        RenderNode next = tree;
        for (int change = random.number(1, 6); change > 0; --change)
            random.change(next);
        if (random.one_in(20))
            random.recolour(next);
        go_to(at("", std::move(next)));
        disturb();
        checked = 0;
        check_node(tree, nullptr);
        check_counts();
    }
    EXPECT_EQ(seen.size(), 14U + 4U);
    apply({removal("App")});
    EXPECT_TRUE(state.nodes.empty() && state.floating.empty() && state.by_outer.empty() &&
                state.modals.empty() && state.editors.empty() && state.videos.empty() &&
                state.scroll_values.empty() && state.themed_bars.empty());
    EXPECT_EQ(window->findChildren<QWidget*>().size(), 0);
}

} // namespace
} // namespace ViewTest
