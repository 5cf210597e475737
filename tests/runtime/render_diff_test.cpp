#include "plain_render.h"
#include "runtime/render_diff.h"
#include "support/model_view.h"

#include <gtest/gtest.h>

#include <random>

namespace Corvel {

/// So that gtest can show a patch.
void PrintTo(const RenderPatch& patch, std::ostream* out) {
    static const char* const kinds[] = {"Add", "Remove", "Update", "Replace", "SetEditorText"};
    *out << kinds[static_cast<int>(patch.kind)] << " " << patch.path.get() << " in "
         << patch.parent_path.get() << " at " << patch.index;
}

namespace {

using TestSupport::ModelView;

/// A tree from a text: each character is a child named so, its kind a Text if in upper case; what
/// follows in brackets are its children.
RenderNode parse_node(const std::string& text, std::size_t& at, const std::string& parent) {
    RenderNode node;
    const char letter = text[at++];
    node.kind = letter < 'a' ? NodeKind::Text : NodeKind::Box;
    node.name = std::string(1, static_cast<char>(letter | 0x20));
    node.path = parent.empty() ? node.name.get() : parent + "/" + node.name.get();
    while (at < text.size() && text[at] >= '0' && text[at] <= '9')
        node.text = node.text.get() + text[at++];
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

std::string words(const std::vector<RenderPatch>& patches) {
    std::string text;
    for (const RenderPatch& patch : patches) {
        text += "+-u!e"[static_cast<int>(patch.kind)] + patch.path.get();
        if (patch.kind == PatchKind::Add)
            text += "@" + std::to_string(patch.index);
        text += " ";
    }
    return text;
}

struct DiffCase {
    const char* before;
    const char* after;
    const char* patches;
};

class Diff : public testing::TestWithParam<DiffCase> {};

TEST_P(Diff, GivesThesePatches) {
    const RenderNode before = tree_of(GetParam().before);
    const RenderNode after = tree_of(GetParam().after);
    for (SiblingNames names : {SiblingNames::Distinct, SiblingNames::MayRepeat}) {
        std::vector<RenderPatch> patches;
        diff_nodes(before, after, names, patches);
        EXPECT_EQ(words(patches), GetParam().patches);
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, Diff,
                         testing::Values(DiffCase{"r(ab)", "r(ab)", ""},
                                         DiffCase{"r(ab)", "r1(ab)", "ur "},
                                         DiffCase{"r(ab(c))", "r(ab(c5))", "ur/b/c "},
                                         DiffCase{"r(ab)", "r(ba)", ""}, // a move is not seen
                                         DiffCase{"r(ab)", "r(xaby)", "+r/x@0 +r/y@3 "},
                                         DiffCase{"r(abc(d))", "r(b)", "-r/a -r/c "},
                                         DiffCase{"r(a1b)", "r(b2a1)", "ur/b "},
                                         DiffCase{"r(ab)", "r(cb1)", "-r/a +r/c@0 ur/b "},
                                         DiffCase{"r(a(b))", "r(A(b))", "!r/a "},
                                         DiffCase{"r(a)", "r", "-r/a "},
                                         DiffCase{"r", "R(a)", "!r "}));

TEST(Diff, CarriesWhatAPatchNeeds) {
    std::vector<RenderPatch> patches;
    diff_nodes(tree_of("r(a(b)c)"), tree_of("r(a1(b)C(d)e(f))"), SiblingNames::Distinct, patches);
    ASSERT_EQ(patches.size(), 3u);
    EXPECT_EQ(patches[0].kind, PatchKind::Update);
    EXPECT_TRUE(patches[0].node.children.empty());
    EXPECT_EQ(patches[1].kind, PatchKind::Replace);
    EXPECT_EQ(patches[1].parent_path, "r");
    EXPECT_EQ(patches[1].index, 0);
    EXPECT_EQ(patches[1].node.children.size(), 1u);
    EXPECT_EQ(patches[2].kind, PatchKind::Add);
    EXPECT_EQ(patches[2].parent_path, "r");
    EXPECT_EQ(patches[2].node.children.size(), 1u);
}

TEST(Diff, OfRepeatedNamesHeedsTheLaterOne) {
    std::vector<RenderPatch> patches;
    diff_nodes(tree_of("r(a1a2)"), tree_of("r(a1a2)"), SiblingNames::MayRepeat, patches);
    EXPECT_EQ(words(patches), "ur/a ");
    patches.clear();
    diff_nodes(tree_of("r(a1a2)"), tree_of("r(a2)"), SiblingNames::MayRepeat, patches);
    EXPECT_EQ(words(patches), "");
}

TEST(Diff, LooksAtEveryPartOfANode) {
    RenderNode node = tree_of("a");
    auto differs = [&node](auto change) {
        RenderNode other = node;
        change(other);
        return !nodes_equal(node, other);
    };
    EXPECT_TRUE(differs([](RenderNode& n) { n.text = "x"; }));
    EXPECT_TRUE(differs([](RenderNode& n) { n.selected = "x"; }));
    EXPECT_TRUE(differs([](RenderNode& n) { n.items = {{"v", "l"}}; }));
    EXPECT_TRUE(differs([](RenderNode& n) { n.style.edit().bind = "x"; }));
    EXPECT_FALSE(differs([](RenderNode& n) { n.name = "x"; }));
    EXPECT_FALSE(differs([](RenderNode& n) { n.path = "x"; }));
    EXPECT_FALSE(differs([](RenderNode& n) { n.children.emplace_back(); }));
    EXPECT_FALSE(differs([](RenderNode& n) { n.style.edit(); }));
}

/// A random tree of names in ever the same order, so that survivors keep their places.
void grow(RenderNode& node, std::mt19937& random, int depth) {
    node.text = std::string(random() % 4, 'x');
    for (char name = 'a'; depth > 0 && name < 'g'; ++name) {
        if (random() % 2 == 0)
            continue;
        RenderNode& child = node.children.emplace_back();
        child.name = std::string(1, name);
        child.path = node.path.get() + "/" + name;
        grow(child, random, depth - 1);
    }
}

TEST(Diff, BringsAViewToTheExactOrderIfNothingMoves) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        std::mt19937 random(seed);
        ModelView view;
        RenderNode tree = tree_of("r");
        ASSERT_EQ(view.apply({{PatchKind::Add, tree.path, {}, 0, tree}}), "");
        for (int step = 0; step < 6; ++step) {
            RenderNode next = tree_of("r");
            grow(next, random, 3);
            std::vector<RenderPatch> patches;
            diff_nodes(tree, next, SiblingNames::Distinct, patches);
            ASSERT_EQ(view.apply(patches), "") << "seed " << seed << ": " << words(patches);
            ASSERT_EQ(view.mismatch(next, ModelView::Order::AsInTree), "")
                << "seed " << seed << ": " << words(patches);
            tree = next;
        }
    }
}

TEST(ModelView, RefusesWhatAViewCannotDo) {
    const RenderNode tree = tree_of("r(a)");
    const RenderNode child = tree.children[0];
    const RenderPatch refused[] = {
        {PatchKind::Add, child.path, "r", 0, child},   {PatchKind::Add, "r/b", "x", 0, child},
        {PatchKind::Remove, "r/b", {}, 0, {}},         {PatchKind::Update, "r/b", {}, 0, child},
        {PatchKind::Update, "r", {}, 0, tree},         {PatchKind::Replace, "r/b", "r", 0, child},
        {PatchKind::Add, "r/c", "r", 2, tree_of("c")},
    };
    for (const RenderPatch& patch : refused) {
        ModelView view;
        ASSERT_EQ(view.apply({{PatchKind::Add, "r", {}, 0, tree}}), "");
        EXPECT_NE(view.apply({patch}), "") << testing::PrintToString(patch);
    }
    ModelView view;
    view.apply({{PatchKind::Add, "r", {}, 0, tree}});
    EXPECT_EQ(view.mismatch(tree, ModelView::Order::AsInTree), "");
    EXPECT_NE(view.mismatch(tree_of("r(ab)"), ModelView::Order::Any), "");
    EXPECT_NE(view.mismatch(tree_of("r1(a)"), ModelView::Order::Any), "");
    EXPECT_NE(view.mismatch(tree_of("r"), ModelView::Order::Any), "");
}

} // namespace
} // namespace Corvel
