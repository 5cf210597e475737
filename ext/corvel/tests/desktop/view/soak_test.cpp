#include "desktop/widgets/icon_widget.h"
#include "runtime/render_diff.h"
#include "view_fixture.h"

#include <QApplication>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <random>
#include <set>

namespace ViewTest {
namespace {

/// Random changes to a render tree, the same for the same seed.
class RandomTree {
public:
    int number(int low, int high) {
        // Not a standard distribution: those differ between libraries.
        return low + static_cast<int>(engine_() % static_cast<unsigned>(high - low + 1));
    }
    bool one_in(int chances) { return number(1, chances) == 1; }
    template <class T>
    T one_of(std::initializer_list<T> choices) {
        return choices.begin()[number(0, static_cast<int>(choices.size()) - 1)];
    }
    std::string word() { return one_of({"a", "some words", "**bold** and `code`", "0"}); }
    std::string colour() { return one_of({"", "#102030", "#80ff0000", "no colour"}); }

    RenderNode& node_of(RenderNode& tree) {
        RenderNode* chosen = &tree;
        while (!chosen->children.empty() && !one_in(3))
            chosen = &*any_place(chosen->children, 1);
        return *chosen;
    }

    /// Adds, removes, replaces or restyles one node.
    void change(RenderNode& tree) {
        RenderNode& chosen = node_of(tree);
        const int what = number(1, 10);
        if (what <= 3)
            add_child(chosen);
        else if (what <= 5 && !chosen.children.empty())
            chosen.children.erase(any_place(chosen.children, 1));
        else if (what == 6 && &chosen != &tree)
            chosen.kind = any_kind();
        else
            restyle(chosen);
    }

    /// Gives every node other colours, as a theme does.
    void recolour(RenderNode& tree) {
        tree.style.edit().text_color = colour();
        tree.style.edit().fill.text = colour();
        for (RenderNode& child : tree.children)
            recolour(child);
    }

private:
    NodeKind any_kind() { return one_in(2) ? NodeKind::Box : static_cast<NodeKind>(number(0, 13)); }
    std::vector<RenderNode>::iterator any_place(std::vector<RenderNode>& nodes, int from_end) {
        return nodes.begin() + number(0, static_cast<int>(nodes.size()) - from_end);
    }

    void add_child(RenderNode& parent) {
        const std::string row = one_in(6) ? "/x" : ""; // the ids of rows hold slashes
        RenderNode child = node(any_kind(), "N" + std::to_string(number(1, 6)) + row);
        for (const RenderNode& sibling : parent.children)
            if (sibling.name == child.name)
                return;
        child.text = word();
        for (int times = number(0, 6); times > 0; --times)
            restyle(child);
        const bool takes_children = parent.kind == NodeKind::Box ||
                                    parent.kind == NodeKind::Button ||
                                    parent.kind == NodeKind::CheckBox;
        if (takes_children || one_in(10))
            parent.children.insert(any_place(parent.children, 0), std::move(child));
    }

    void restyle(RenderNode& chosen) {
        NodeStyle& s = chosen.style.edit();
        const auto size = [this] { return one_in(2) ? 0 : number(1, 300); };
        const auto fraction = [this] { return one_of({0.0, 0.25, 0.5, 1.0}); };
        const std::function<void()> edits[] = {
            [&] {
                s.overlay = one_of({"", "PinnedBottom", "BottomSheet", "ModalSheet"});
            },
            [&] {
                s.overlay = one_of({"", "", "Modal", "SideSheet"});
            },
            [&] { s.offset_x = s.offset_y = fraction(); },
            [&] { s.offset_x = s.offset_y = fraction(); },
            [&] {
                s.layout_direction = one_of({"", "Row", "Row-Reverse", "Column-Reverse"});
            },
            [&] {
                s.layout_align = one_of({"", "Start", "End", "Stretch"});
            },
            [&] {
                s.layout_justify = one_of({"", "Start", "End"});
            },
            [&] {
                s.layout_scroll = one_of({"", "", "Vertical", "Horizontal", "Both"});
            },
            [&] { s.layout_grow = number(0, 2); },
            [&] { s.max_width = size(); },
            [&] {
                s.margin_left = one_of({0, 8});
            },
            [&] { s.width = size(), s.height = size(); },
            [&] { s.opacity = fraction(); },
            [&] { s.collapsed = !s.collapsed; },
            [&] { s.padding_bottom = number(0, 20), s.border_thickness = number(0, 3); },
            [&] { s.multiline = !s.multiline, s.read_only = one_in(3); },
            [&] {
                s.data = word(), s.source = one_of({"", "an-icon"});
            },
            [&] { s.text_color = colour(), s.fill.text = colour(); },
            [&] { chosen.text = word(); },
            [&] {
                chosen.items = {{"a", word()}, {"b", word()}};
            },
            [&] {
                chosen.selected = one_of({"a", "b", "c"});
            },
        };
        edits[number(0, static_cast<int>(std::size(edits)) - 1)]();
    }

    std::mt19937 engine_{20240229};
};

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
        EXPECT_TRUE(!dnode->editor || dnode->editor->wanted_text == node.text);
        EXPECT_TRUE(!dnode->combo || dnode->combo->items == node.items.get());
        EXPECT_TRUE(!dnode->icon || dnode->icon->color == node.style->text_color);
        EXPECT_EQ(dnode->arrangement.scroll_area != nullptr,
                  dnode->layout && !node.style->layout_scroll.empty());
        check_place(node, *dnode);
        std::size_t in_layout = dnode->label ? 1 : 0;
        for (const RenderNode& child : node.children) {
            check_node(child, dnode);
            in_layout += !state.overlays.floating.contains(child.path) &&
                         !state.overlays.modals.contains(child.path);
        }
        EXPECT_TRUE(!dnode->layout || laid_out(node.path).size() == in_layout);
    }

    /// A node stands in its parent's layout, or floats, or is a window, or lies apart.
    void check_place(const RenderNode& node, const DNode& dnode) {
        EXPECT_TRUE(dnode.outer == dnode.widget || dnode.outer->isAncestorOf(dnode.widget));
        EXPECT_EQ(state.overlays.floating.contains(node.path), dnode.overlay.floats());
        if (state.overlays.modals.contains(node.path)) {
            seen.insert("window");
            EXPECT_NE(dnode.widget->window(), window.get());
        } else if (state.overlays.floating.contains(node.path)) {
            seen.insert(dnode.overlay.is_bar() ? "bar" : "side");
            EXPECT_EQ(dnode.outer->parentWidget(), dnode.parent->box);
        } else if (dnode.parent && !dnode.parent->layout) {
            seen.insert("apart");
            EXPECT_EQ(dnode.outer->parentWidget(), nullptr);
        } else if (dnode.parent) {
            EXPECT_GE(dnode.parent->layout->indexOf(dnode.outer), 0);
            EXPECT_FALSE(dnode.outer->isHidden());
        }
        EXPECT_TRUE(!dnode.layout ||
                    dnode.layout->contentsMargins().bottom() ==
                        dnode.arrangement.inset_bottom + dnode.arrangement.reserved_bottom);
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
        EXPECT_EQ(state.nodes.size(), checked);
        EXPECT_EQ(windows(), 1 + static_cast<long>(state.overlays.modals.size()));
    }
    EXPECT_EQ(seen.size(), 14U + 4U);
    apply({removal("App")});
    EXPECT_TRUE(state.nodes.empty() && state.overlays.floating.empty() && state.by_outer.empty() &&
                state.overlays.modals.empty() && state.editors.empty() &&
                state.videos.all.empty() && state.bars.scroll_values.empty() &&
                state.bars.themed.empty() && state.bars.strips.empty());
    EXPECT_LE(QApplication::allWidgets().size(), 2)
        << "the window, and one that Qt keeps to itself";
}

} // namespace
} // namespace ViewTest
