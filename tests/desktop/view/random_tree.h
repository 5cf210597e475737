#pragma once

#include "view_fixture.h"

#include <functional>
#include <iterator>
#include <random>

namespace ViewTest {

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
    static bool takes_children(NodeKind kind) {
        return kind == NodeKind::Box || kind == NodeKind::Button || kind == NodeKind::CheckBox;
    }
    std::vector<RenderNode>::iterator any_place(std::vector<RenderNode>& nodes, int from_end) {
        return nodes.begin() + number(0, static_cast<int>(nodes.size()) - from_end);
    }

    void add_child(RenderNode& parent) {
        RenderNode child = node(any_kind(), "N" + std::to_string(number(1, 6)));
        if (one_in(6)) // like the id of a row
            child.name = child.name.get() + "/x";
        for (const RenderNode& sibling : parent.children)
            if (sibling.name == child.name)
                return;
        child.text = word();
        for (int times = number(0, 6); times > 0; --times)
            restyle(child);
        if (takes_children(child.kind) && one_in(2))
            add_child(child);
        if (takes_children(parent.kind) || one_in(10))
            parent.children.insert(any_place(parent.children, 0), std::move(child));
    }

    void restyle(RenderNode& chosen) {
        NodeStyle& style = chosen.style.edit();
        const auto size = [this] { return one_in(2) ? 0 : number(1, 300); };
        const auto fraction = [this] { return one_of({0.0, 0.25, 0.5, 1.0}); };
        const auto overlay = [this, &style] {
            style.overlay =
                one_of({"", "", "PinnedBottom", "Modal", "BottomSheet", "ModalSheet", "SideSheet"});
        };
        const auto slide = [&] { style.offset_x = style.offset_y = fraction(); };
        const std::function<void()> edits[] = {
            overlay,
            overlay,
            slide,
            slide,
            [&] {
                style.layout_direction = one_of({"", "Row", "Row-Reverse", "Column-Reverse"});
            },
            [&] {
                style.layout_align = one_of({"", "Start", "End", "Stretch"});
            },
            [&] {
                style.layout_justify = one_of({"", "Start", "End"});
            },
            [&] {
                style.layout_scroll = one_of({"", "", "Vertical", "Both"});
            },
            [&] { style.layout_grow = number(0, 2); },
            [&] { style.max_width = size(); },
            [&] {
                style.margin_left = one_of({0, 8});
            },
            [&] { style.width = size(), style.height = size(); },
            [&] { style.opacity = fraction(); },
            [&] { style.collapsed = !style.collapsed; },
            [&] { style.padding_bottom = number(0, 20), style.border_thickness = number(0, 3); },
            [&] { style.multiline = !style.multiline, style.read_only = one_in(3); },
            [&] {
                style.data = word(), style.source = one_of({"", "an-icon"});
            },
            [&] { style.text_color = colour(), style.fill.text = colour(); },
            [&] { chosen.text = word(); },
            [&] {
                if (chosen.kind == NodeKind::ComboBox)
                    chosen.items = {{"a", word()}, {"b", word()}};
                chosen.selected = one_of({"a", "b", "c"});
            },
        };
        edits[number(0, static_cast<int>(std::size(edits)) - 1)]();
    }

    std::mt19937 engine_{20240229};
};

} // namespace ViewTest
