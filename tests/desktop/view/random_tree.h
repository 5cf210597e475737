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
                s.layout_scroll = one_of({"", "", "Vertical", "Both"});
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

} // namespace ViewTest
