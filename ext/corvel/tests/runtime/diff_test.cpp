#include "runtime/app_fixture.h"
#include "runtime/render_diff.h"
#include "support/model_view.h"

#include <gtest/gtest.h>

#include <random>

namespace Corvel {
namespace {

using TestSupport::ModelView;

/// A tree from a text: each letter is a node named so, its kind a Text if in upper case; then come
/// its text, a digit, and its children in brackets.
RenderNode parse_node(const std::string& text, std::size_t& at, const std::string& parent) {
    RenderNode node;
    const char letter = text[at++];
    node.kind = letter < 'a' ? NodeKind::Text : NodeKind::Box;
    node.name = std::string(1, static_cast<char>(letter | 0x20));
    node.path = parent.empty() ? node.name.get() : parent + "/" + node.name.get();
    if (at < text.size() && text[at] >= '0' && text[at] <= '9')
        node.text = std::string(1, text[at++]);
    if (at < text.size() && text[at] == '(') {
        for (++at; text[at] != ')';)
            node.children.push_back(parse_node(text, at, node.path));
        ++at;
    }
    return node;
}

RenderNode tree_of(const std::string& text) {
    std::size_t at = 0;
    return parse_node(text, at, "");
}

std::string diff(const std::string& before, const std::string& after, SiblingNames names) {
    std::vector<RenderPatch> patches;
    diff_nodes(tree_of(before), tree_of(after), names, patches);
    return TestSupport::patches_text(patches);
}

TEST(Diff, GivesThesePatches) {
    const struct {
        const char* before;
        const char* after;
        const char* patches;
    } cases[] = {
        {"r(ab)", "r(ab)", ""},
        {"r(ab)", "r1(ab)", "ur"},
        {"r(ab(c))", "r(ab(c5))", "ur/b/c"},
        {"r(ab)", "r(ba)", ""}, // a move is not seen
        {"r(ab)", "r(xaby)", "+r/x@0 +r/y@3"},
        {"r(abc(d))", "r(b)", "-r/a -r/c"},
        {"r(a1b)", "r(b2a1)", "ur/b"},
        {"r(ab)", "r(cb1)", "-r/a +r/c@0 ur/b"},
        {"r(a(b))", "r(A(b))", "!r/a"},
        {"r(a)", "r", "-r/a"},
        {"r", "R(a)", "!r"},
    };
    for (const auto& c : cases)
        for (const SiblingNames names : {SiblingNames::Distinct, SiblingNames::MayRepeat})
            EXPECT_EQ(diff(c.before, c.after, names), c.patches) << c.before << ' ' << c.after;
    // Of repeated names the later one counts.
    EXPECT_EQ(diff("r(a1a2)", "r(a1a2)", SiblingNames::MayRepeat), "ur/a");
    EXPECT_EQ(diff("r(a1a2)", "r(a2)", SiblingNames::MayRepeat), "");
}

/// A random tree. If `names` keep their order, so do survivors.
void grow(RenderNode& node, std::mt19937& random, int depth, bool shuffled) {
    node.text = std::string(random() % 4, 'x');
    node.kind = shuffled && random() % 20 == 0 ? NodeKind::Text : NodeKind::Box;
    std::string names = "abcdef";
    if (shuffled)
        std::shuffle(names.begin(), names.end(), random);
    for (const char name : names) {
        if (depth == 0 || random() % 2 == 0)
            continue;
        RenderNode& child = node.children.emplace_back();
        child.name = std::string(1, name);
        child.path = node.path.get() + "/" + name;
        grow(child, random, depth - 1, shuffled);
    }
}

TEST(Diff, BringsAViewToTheNewTree) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        SCOPED_TRACE(seed);
        const bool shuffled = seed % 2 == 0; // moves are not seen, so order is lost
        std::mt19937 random(seed);
        ModelView view;
        RenderNode tree = tree_of("r");
        ASSERT_EQ(view.apply({{PatchKind::Add, tree.path, {}, 0, tree}}), "");
        for (int step = 0; step < 6; ++step) {
            RenderNode next = tree_of("r");
            grow(next, random, 3, shuffled);
            next.kind = NodeKind::Box;
            std::vector<RenderPatch> patches;
            diff_nodes(tree, next, SiblingNames::Distinct, patches);
            ASSERT_EQ(view.apply(patches), "");
            ASSERT_EQ(
                view.mismatch(next, shuffled ? ModelView::Order::Any : ModelView::Order::AsInTree),
                "");
            tree = next;
        }
    }
}

} // namespace
} // namespace Corvel
