#pragma once

#include "view_fixture.h"

#include <array>
#include <random>
#include <string>
#include <vector>

namespace ViewTest {

/// Random changes to a render tree, the same for the same seed.
class RandomTree {
public:
    explicit RandomTree(unsigned seed)
        : engine_(seed) {}

    int number(int low, int high) {
        // Not a standard distribution: those differ between libraries.
        return low + static_cast<int>(engine_() % static_cast<unsigned>(high - low + 1));
    }
    bool one_in(int chances) { return number(1, chances) == 1; }
    template <class T>
    const T& one_of(const std::vector<T>& choices) {
        return choices[static_cast<std::size_t>(number(0, static_cast<int>(choices.size()) - 1))];
    }
    std::string word() { return one_of(words_); }

    RenderNode& node_of(RenderNode& tree) {
        RenderNode* chosen = &tree;
        while (!chosen->children.empty() && !one_in(3))
            chosen = &chosen->children[static_cast<std::size_t>(
                number(0, static_cast<int>(chosen->children.size()) - 1))];
        return *chosen;
    }

    /// Adds, removes, replaces or restyles one node.
    void change(RenderNode& tree) {
        RenderNode& chosen = node_of(tree);
        const int what = number(1, 10);
        if (what <= 3 && count(tree) < NODE_LIMIT && (takes_children(chosen) || one_in(10)))
            add_child(chosen);
        else if (what <= 5 && !chosen.children.empty())
            chosen.children.erase(chosen.children.begin() +
                                  number(0, static_cast<int>(chosen.children.size()) - 1));
        else if (what == 6 && &chosen != &tree)
            chosen.kind = any_kind();
        else
            restyle(chosen);
    }

    /// Gives every node other colours, as a theme does.
    void recolour(RenderNode& tree) {
        tree.style.edit().text_color = one_of(colours_);
        tree.style.edit().fill.text = one_of(colours_);
        for (RenderNode& child : tree.children)
            recolour(child);
    }

private:
    static constexpr int NODE_LIMIT = 60;

    static int count(const RenderNode& tree) {
        int nodes = 1;
        for (const RenderNode& child : tree.children)
            nodes += count(child);
        return nodes;
    }
    static bool takes_children(const RenderNode& chosen) {
        return chosen.kind == NodeKind::Box || chosen.kind == NodeKind::Button ||
               chosen.kind == NodeKind::CheckBox;
    }
    NodeKind any_kind() { return one_in(2) ? NodeKind::Box : static_cast<NodeKind>(number(0, 13)); }

    void add_child(RenderNode& parent) {
        RenderNode child = node("N" + std::to_string(number(1, 12)), any_kind());
        if (one_in(6))
            child.name = "N" + std::to_string(number(1, 12)) + "/x";
        for (const RenderNode& sibling : parent.children)
            if (sibling.name == child.name)
                return;
        child.text = word();
        for (int times = number(0, 6); times > 0; --times)
            restyle(child);
        if (takes_children(child) && one_in(2))
            add_child(child);
        parent.children.insert(parent.children.begin() +
                                   number(0, static_cast<int>(parent.children.size())),
                               std::move(child));
    }

    double size() { return one_in(2) ? 0 : number(1, 300); }

    void restyle(RenderNode& chosen) {
        NodeStyle& style = chosen.style.edit();
        switch (number(1, 20)) {
        case 1:
            // A caption exists only if there was a text at creation.
            if (!chosen.text->empty() || !takes_children(chosen))
                chosen.text = one_of(words_);
            break;
        case 2:
            style.layout_direction = one_of(directions_);
            break;
        case 3:
            style.layout_align = one_of(places_);
            style.layout_justify = one_of(places_);
            break;
        case 4:
            style.layout_scroll = one_of(scrolls_);
            break;
        case 5:
            style.layout_grow = number(0, 2);
            break;
        case 6:
            style.max_width = size();
            break;
        case 7:
            style.margin_left = one_in(2) ? 0 : 8;
            style.margin_top = number(0, 1);
            break;
        case 8:
            style.width = size();
            style.height = size();
            break;
        case 9:
            style.opacity = one_of(fractions_);
            break;
        case 10:
        case 11:
            style.overlay = one_of(overlays_);
            break;
        case 12:
        case 13:
            style.offset_x = one_of(fractions_);
            style.offset_y = one_of(fractions_);
            break;
        case 14:
            style.collapsed = !style.collapsed;
            break;
        case 15:
            style.padding_bottom = number(0, 20);
            style.border_thickness = number(0, 3);
            break;
        case 16:
            style.multiline = !style.multiline;
            style.read_only = one_in(3);
            break;
        case 17:
            style.data = word();
            style.source = one_in(2) ? "" : "an-icon";
            break;
        case 18:
            if (chosen.kind == NodeKind::ComboBox)
                chosen.items = {{"a", word()}, {word(), word()}};
            chosen.selected = word();
            break;
        default:
            style.text_color = one_of(colours_);
            style.fill.text = one_of(colours_);
        }
    }

    const std::vector<std::string> words_{"a", "some words", "word word word word word word",
                                          "**bold** and `code`", "0"};
    const std::vector<std::string> colours_{"", "#102030", "#80ff0000", "no colour"};
    const std::vector<std::string> directions_{"", "Row", "Row-Reverse", "Column-Reverse"};
    const std::vector<std::string> places_{"", "Start", "End", "Stretch"};
    const std::vector<std::string> scrolls_{"", "", "Vertical", "Both"};
    const std::vector<std::string> overlays_{
        "", "", "PinnedBottom", "Modal", "BottomSheet", "ModalSheet", "SideSheet"};
    const std::vector<double> fractions_{0, 0.25, 0.5, 1, 1};
    std::mt19937 engine_;
};

} // namespace ViewTest
