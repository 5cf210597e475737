#include "layers/engine.h"
#include "runtime/app_fixture.h"
#include "runtime/render_builder.h"

#include <gtest/gtest.h>

namespace Corvel {
namespace {

using TestSupport::find_node;
using TestSupport::TestApp;
using TestSupport::theme_text;
using Names = std::vector<std::string>;

Names child_names(const RenderNode& tree, const std::string& path) {
    Names names;
    if (const RenderNode* node = find_node(tree, path))
        for (const RenderNode& child : node->children)
            names.push_back(child.name);
    return names;
}

TEST(NodeKinds, ComeFromTheChainOfBases) {
    TestApp app("Mine << Corvel/Check Box\nTwice << Mine\n"
                "App:\n    A << Corvel/Button\n    B << Twice\n    C << Corvel/Nothing\n"
                "    Icon\n    E << Corvel/Combo Box\n    Deep << Twice:\n        Text\n"
                "    button\n");
    const std::pair<const char*, NodeKind> kinds[] = {
        {"App", NodeKind::Box},           {"App/A", NodeKind::Button},
        {"App/B", NodeKind::CheckBox},    {"App/C", NodeKind::Box},
        {"App/Icon", NodeKind::Icon},     {"App/E", NodeKind::ComboBox},
        {"App/Deep", NodeKind::CheckBox}, {"App/Deep/Text", NodeKind::Text},
        {"App/button", NodeKind::Box},
    };
    const RenderNode tree = app->build_render_tree();
    for (const auto& [path, kind] : kinds) {
        ASSERT_NE(find_node(tree, path), nullptr) << path;
        EXPECT_EQ(find_node(tree, path)->kind, kind) << path;
    }
    EXPECT_EQ(node_kind_of(nullptr), NodeKind::Box);
}

TEST(TemplateChildren, LeaveOutWhatInheritsFromDetail) {
    TestApp app("App:\n    Detail\n    A << Corvel/Detail\n    B << App/A\n    C << Corvel/Box\n");
    EXPECT_EQ(child_names(app->build_render_tree(), "App"), Names({"Detail", "C"}));
}

/// A row template whose only child is `layer`, shown for one row with `fields`.
class BoundNode {
public:
    BoundNode(const std::string& kind, const std::string& attributes,
              std::map<std::string, std::string> fields)
        : app_("App:\n    List:\n        Bind: \"List:l\"\n        Row:\n"
               "            N << Corvel/" +
               kind + ":\n" + attributes) {
        app_->set_rows("l", {{"r", std::move(fields)}});
        tree_ = app_->build_render_tree();
    }
    /// Null if the node is left out.
    const RenderNode* node() const { return find_node(tree_, "App/List/r/N"); }
    const NodeStyle& style() const { return node()->style; }

private:
    TestApp app_;
    RenderNode tree_;
};

std::string bind(const std::string& pieces) {
    return "                Bind: \"" + pieces + "\"\n                Source: \"own\"\n";
}

TEST(Fields, DecideByKindWhatIsShown) {
    using Fields = std::map<std::string, std::string>;
    for (const char* kind : {"Text", "Button", "Editor", "Box"}) {
        SCOPED_TRACE(kind);
        EXPECT_EQ(BoundNode(kind, bind("Field:k"), {}).node(), nullptr);
        EXPECT_EQ(BoundNode(kind, bind("Field:k"), {{"k", ""}}).node()->text, "");
        EXPECT_EQ(BoundNode(kind, bind("Field:k"), {{"k", "\xff\x01"}}).node()->text, "\xff\x01");
    }
    for (const char* kind : {"Image", "Video"}) {
        SCOPED_TRACE(kind);
        EXPECT_EQ(BoundNode(kind, bind("Field:k"), {}).node(), nullptr);
        EXPECT_EQ(BoundNode(kind, bind("Field:k"), {{"k", ""}}).node(), nullptr);
        const BoundNode shown(kind, bind("Field:k"), {{"k", "pic"}});
        EXPECT_EQ(shown.style().effective_source, "pic");
        EXPECT_EQ(shown.style().source, "own");
    }
    for (const Fields& fields : {Fields(), Fields{{"k", ""}}})
        EXPECT_EQ(BoundNode("Icon", bind("Field:k"), fields).style().source, "own");
    EXPECT_EQ(BoundNode("Icon", bind("Field:k"), {{"k", "star"}}).style().source, "star");
    EXPECT_EQ(BoundNode("Image", bind("Field:k") + "                Visible: 0\n", {{"k", "p"}})
                  .style()
                  .effective_source,
              "p"); // a source makes it visible
}

TEST(Fields, SetNumbersThatFit) {
    const struct {
        const char* value;
        double above_zero; ///< from 5
        double from_zero;  ///< from 5
    } cases[] = {{"7.5 px", 7.5, 7.5}, {"0", 5, 0},     {"-1", 5, 5}, {"", 5, 5},
                 {"word", 5, 5},       {"1e999", 5, 5}, {"-0", 5, 0}};
    const std::string attributes = bind("MaxWidth:k;Aspect:k;Indent:k;Grow:k") +
                                   "                Size.Max Width: 5\n"
                                   "                Aspect Ratio: 5\n"
                                   "                Margins.Left: 5\n"
                                   "                Layout.Grow: 5\n";
    for (const auto& c : cases) {
        SCOPED_TRACE(c.value);
        const BoundNode bound("Box", attributes, {{"k", c.value}});
        EXPECT_EQ(bound.style().max_width, c.above_zero);
        EXPECT_EQ(bound.style().aspect_ratio, c.above_zero);
        EXPECT_EQ(bound.style().margin_left, c.above_zero);
        EXPECT_EQ(bound.style().layout_grow, c.from_zero);
    }
}

TEST(Fields, SetTextsSwitchesAndStates) {
    const std::string attributes =
        bind("Href:h;Placeholder:p;Opacity:o;State:On:s;State:Off:o") +
        "                Href: \"own\"\n                Placeholder: \"own\"\n"
        "                Size.Width: 1 @On: 2 @Off: 4 @On & Off: 8\n";
    const BoundNode empty("Editor", attributes, {{"h", ""}});
    EXPECT_EQ(empty.style().href, "own");
    EXPECT_EQ(empty.style().placeholder, "own");
    EXPECT_EQ(empty.style().opacity, 0);
    EXPECT_EQ(empty.style().width, 1);
    const BoundNode full("Editor", attributes, {{"h", "x"}, {"p", "y"}, {"o", "0.5"}, {"s", "1"}});
    EXPECT_EQ(full.style().href, "x");
    EXPECT_EQ(full.style().placeholder, "y");
    EXPECT_EQ(full.style().opacity, 1);
    EXPECT_EQ(full.style().width, 8);
}

TEST(Fields, OutsideAListOnlyHide) {
    TestApp app("App:\n    A << Corvel/Text:\n        Bind: \"Field:k\"\n"
                "    B << Corvel/Text:\n        Bind: \"Opacity:k;Grow:k;State:S:k\"\n"
                "    C << Corvel/Icon:\n        Bind: \"Field:k\"\n"
                "    D << Corvel/Image:\n        Bind: \"Field:k\"\n");
    const RenderNode tree = app->build_render_tree();
    EXPECT_EQ(child_names(tree, "App"), Names({"B", "C"}));
    EXPECT_EQ(find_node(tree, "App/B")->style->opacity, 1);
}

const std::string separated_list =
    "App:\n    List:\n        Bind: \"List:l\"\n"
    "        Row:\n            Size.Width: 0 @First: 1 @Last: 2 @First & Last: 3\n"
    "            Visible: 0\n"
    "        Line:\n            Visible: 1 @Bare: 0\n            Size.Width: 0 @First: 9 @Last: 9\n"
    "        Third\n";

TEST(Rows, HavePlacesStatesAndSeparators) {
    TestApp app(separated_list);
    auto render = [&](std::vector<ListEntry> rows) {
        app->set_rows("l", std::move(rows));
        return app->build_render_tree();
    };
    EXPECT_EQ(child_names(app->build_render_tree(), "App/List"), Names());
    RenderNode tree = render({{"a", {}}});
    EXPECT_EQ(child_names(tree, "App/List"), Names({"a"})); // shown though not visible
    EXPECT_EQ(find_node(tree, "App/List/a")->style->width, 3);

    tree = render({{"a", {}}, {"b/c", {}}, {"", {}}});
    EXPECT_EQ(child_names(tree, "App/List"), Names({"a", "a:sep", "b/c", "b/c:sep", ""}));
    EXPECT_EQ(find_node(tree, "App/List/a")->style->width, 1);
    EXPECT_EQ(find_node(tree, "App/List/b/c")->style->width, 0);
    EXPECT_EQ(find_node(tree, "App/List/")->style->width, 2);
    EXPECT_EQ(find_node(tree, "App/List/a:sep")->style->width, 0);

    app->add_state("App/List/a:sep", "Bare");
    app->set_visible("App/List/a", false); // a row cannot be hidden by its path
    app->set_visible("App/List/b/c:sep", false);
    EXPECT_EQ(child_names(app->build_render_tree(), "App/List"),
              Names({"a", "b/c", "b/c:sep", ""}));
}

TEST(Rows, AreShownByEveryNodeOfTheirKey) {
    TestApp app("App:\n    A:\n        Bind: \"List:l\"\n        Row:\n"
                "            Inner:\n                Bind: \"List:m\"\n                R << "
                "Corvel/Text:\n                    Bind: \"Field:k\"\n"
                "    B:\n        Bind: \"List:l\"\n        Row\n"
                "    C:\n        Bind: \"List:l\"\n");
    app->set_rows("l", {{"1", {{"k", "outer"}}}, {"2", {}}});
    app->set_rows("m", {{"x", {{"k", "inner"}}}, {"y", {}}});
    const RenderNode tree = app->build_render_tree();
    EXPECT_EQ(child_names(tree, "App/A"), Names({"1", "2"}));
    EXPECT_EQ(child_names(tree, "App/B"), Names({"1", "2"}));
    EXPECT_EQ(child_names(tree, "App/C"), Names());
    EXPECT_EQ(find_node(tree, "App/A/1/Inner/x")->text, "inner");
    EXPECT_FALSE(find_node(tree, "App/A/2/Inner/y")->style->visible);
}

TEST(Rows, OfOnePathAllHearOfIt) {
    TestApp app("App:\n    List:\n        Bind: \"List:l\"\n        Row << Corvel/Text\n");
    auto texts = [&](const std::string& text) {
        app->set_text("App/List/a", text);
        std::string all;
        const RenderNode tree = app->build_render_tree();
        for (const RenderNode& row : tree.children[0].children)
            all += row.text.get() + ",";
        return all;
    };
    const ListEntry a{"a", {}};
    const ListEntry b{"b", {}};
    app->set_rows("l", {a, a, b, a});
    EXPECT_EQ(texts("1"), "1,1,,1,");
    app->set_rows("l", {a, b, a, a, a});
    EXPECT_EQ(texts("2"), "2,,2,2,2,");
    app->set_rows("l", {a, a, a}); // the first slots stay, the others go
    EXPECT_EQ(texts("3"), "3,3,3,");
    app->set_rows("l", {b});
    EXPECT_EQ(texts("4"), ",");
    app->set_rows("l", {a, a});
    EXPECT_EQ(texts("5"), "5,5,");
}

TEST(Rows, FollowAKeyThatAStateExchanges) {
    TestApp app("App:\n    List:\n        Bind: \"List:l\" @M: \"List:m\" @T: \"ThemeList\" "
                "@N: \"\"\n        Row\n");
    app->set_rows("l", {{"a", {}}, {"b", {}}});
    app->set_rows("m", {{"b", {}}, {"c", {}}});
    auto names_under = [&](const std::string& state) {
        app->add_state("App/List", state);
        app->render_patches();
        const Names names = child_names(app->build_render_tree(), "App/List");
        app->remove_state("App/List", state);
        return names;
    };
    EXPECT_EQ(names_under("L"), Names({"a", "b"}));
    EXPECT_EQ(names_under("M"), Names({"b", "c"}));
    EXPECT_EQ(names_under("T"), Names({"Plain"}));
    EXPECT_EQ(names_under("N"), Names({"Row"}));
    EXPECT_EQ(names_under("L"), Names({"a", "b"}));
}

TEST(Rows, KeepTheTargetsOfSeparatorsInStep) {
    TestApp app("App:\n    List:\n        Bind: \"List:l\"\n        Row\n"
                "        Between << Corvel/Button:\n            Intent: \"list:add:l\"\n");
    int clicks = 0;
    app->on_row_click("l", [&](const auto&, const auto&, const auto&) { ++clicks; });
    app->set_rows("l", {{"a", {}}, {"b", {}}});
    app->render_patches();
    app->dispatch_event("App/List/a:sep", "click");
    app->set_rows("l", {{"a", {}}});
    app->render_patches();
    app->dispatch_event("App/List/a:sep", "click");
    EXPECT_EQ(clicks, 1);
    for (const char* first : {"a", "b", "a"}) {
        clicks = 0;
        app->set_rows("l", {{first, {}}, {first == std::string("a") ? "b" : "a", {}}});
        app->render_patches();
        app->dispatch_event("App/List/" + std::string(first) + ":sep", "click");
        EXPECT_EQ(clicks, 1) << first;
    }
}

TEST(ThemeCards, ShowTheColoursOfTheirThemes) {
    TestApp app(
        "App:\n    Cards:\n        Bind: \"ThemeList\"\n"
        "        Card << Corvel/Button:\n            Fill: \"style\"\n"
        "            Name << Corvel/Text:\n                Bind: \"ThemeName\"\n"
        "            By << Corvel/Box:\n                Bind: \"ThemePublisher\"\n"
        "                Text Color: \"style\"\n"
        "                Dot << Corvel/Icon\n"
        "    Now << Corvel/Text:\n        Bind: \"ActiveThemeName;ThemeName\"\n"
        "    By << Corvel/Text:\n        Bind: \"ActiveThemePublisher\"\n"
        "    Page << Corvel/Markdown\n",
        {theme_text("A", "\"Primary\": \"#p\", \"Foreground\": \"#f\", \"Tertiary\": \"#t\","
                         "\"Secondary\": \"#s\", \"_meta\": {\"publisher\": \"pub\"}"),
         theme_text("B", "\"Foreground\": 4")});
    const RenderNode tree = app->build_render_tree();
    EXPECT_EQ(child_names(tree, "App/Cards"), Names({"A (pub)", "B"}));
    const NodeStyle& active = find_node(tree, "App/Cards/A (pub)")->style;
    EXPECT_EQ(active.fill, (Fill{"#p", false}));
    EXPECT_EQ(active.border_fill, (Fill{"#f", false}));
    EXPECT_EQ(active.border_thickness, 3);
    const NodeStyle& other = find_node(tree, "App/Cards/B")->style;
    EXPECT_EQ(other.fill, Fill()); // the theme names no such colour; defaults are for styles
    EXPECT_EQ(other.border_fill, Fill());
    EXPECT_EQ(other.border_thickness, 1);
    EXPECT_EQ(find_node(tree, "App/Cards/A (pub)/Name")->text, "A");
    EXPECT_EQ(find_node(tree, "App/Cards/A (pub)/Name")->style->text_color, "#f");
    EXPECT_EQ(find_node(tree, "App/Cards/A (pub)/By")->text, "pub");
    EXPECT_EQ(find_node(tree, "App/Cards/A (pub)/By")->style->text_color, "style");
    EXPECT_EQ(find_node(tree, "App/Cards/A (pub)/By/Dot")->style->text_color, "#f");
    EXPECT_EQ(find_node(tree, "App/Now")->text, "A");
    EXPECT_EQ(find_node(tree, "App/By")->text, "pub");
    EXPECT_EQ(find_node(tree, "App/Page")->style->secondary_text_color, "#s");

    int clicks = 0;
    app->on_click("App/Cards/B", [&] { ++clicks; });
    app->dispatch_event("App/Cards/B", "click");
    EXPECT_EQ(app->active_theme(), "B");
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(find_node(app->build_render_tree(), "App/Now")->text, "B");
}

TEST(ThemeCards, ComeAndGoWithTheThemes) {
    TestApp app("App:\n    Bind: \"ThemeList\"\n    Card << Corvel/Button\n",
                {theme_text("A", ""), theme_text("B", "")});
    app->render_patches();
    app->add_theme_text(theme_text("AA", ""));
    app->remove_theme("B");
    const auto patches = app->render_patches();
    ASSERT_EQ(patches.size(), 2u);
    EXPECT_EQ(patches[0].kind, PatchKind::Remove);
    EXPECT_EQ(patches[0].path, "App/B");
    EXPECT_EQ(patches[1].kind, PatchKind::Add);
    EXPECT_EQ(patches[1].path, "App/AA");
    EXPECT_EQ(patches[1].index, 1);
    app->dispatch_event("App/B", "click");
    EXPECT_EQ(app->active_theme(), "A");
}

TEST(ThemeSwitch, ReachesTextsAndBindsThatLinkToTheTheme) {
    TestApp app("App:\n    List:\n        Bind: Theme/Primary\n        Text: Theme/Foreground\n"
                "        Card << Corvel/Button\n",
                {theme_text("A", "\"Primary\": \"ThemeList\", \"Foreground\": \"a\""),
                 theme_text("B", "\"Primary\": \"\", \"Foreground\": \"b\"")});
    EXPECT_EQ(child_names(app->build_render_tree(), "App/List"), Names({"A", "B"}));
    app->set_theme("B");
    EXPECT_EQ(child_names(app->build_render_tree(), "App/List"), Names({"Card"}));
    EXPECT_EQ(find_node(app->build_render_tree(), "App/List")->text, "b");
    app->set_theme("A");
    EXPECT_EQ(child_names(app->build_render_tree(), "App/List"), Names({"A", "B"}));
}

TEST(Invisible, NodesAreBuiltButLeftOut) {
    TestApp app("App:\n    Gone:\n        Visible: 0\n        Add << Corvel/Button:\n"
                "            Intent: \"list:add:l\"\n        Check << Corvel/Check Box\n");
    std::string clicked;
    app->on_row_click("l", [&](const auto&, const auto&, const auto& action) { clicked = action; });
    app->render_patches();
    EXPECT_EQ(child_names(app->build_render_tree(), "App"), Names());
    app->dispatch_event("App/Gone/Add", "click");
    EXPECT_EQ(clicked, "add");
    app->dispatch_event("App/Gone/Check", "click");
    EXPECT_FALSE(app->is_checked("App/Gone/Check"));
}

TEST(Invisible, RowsHaveTheirTargetsAsTheyChange) {
    TestApp app("App:\n    Gone:\n        Visible: 0\n        List:\n"
                "            Bind: \"List:l\"\n            Row << Corvel/Button:\n"
                "                Intent: \"list:open\"\n");
    std::string clicked;
    app->on_row_click("l", [&](const auto&, const auto& item, const auto&) { clicked += item; });
    for (const char* id : {"a", "b"}) {
        app->set_rows("l", {{id, {}}});
        app->render_patches();
        app->dispatch_event("App/Gone/List/a", "click");
        app->dispatch_event("App/Gone/List/b", "click");
    }
    EXPECT_EQ(clicked, "ab");
}

TEST(States, AreInheritedAndAddUp) {
    TestApp app("App:\n    A:\n        Size.Width: 0 @P: 1 @G: 2 @G & P: 3 @G & P & Q: 4\n");
    auto width = [&] { return find_node(app->build_render_tree(), "App/A")->style->width; };
    app->add_state("App", "P");
    EXPECT_EQ(width(), 1);
    app->add_global_state("G");
    EXPECT_EQ(width(), 3);
    app->add_state("App/A", "Q");
    EXPECT_EQ(width(), 4);
    app->remove_state("App", "P");
    app->remove_state("App", "never");
    EXPECT_EQ(width(), 2);
}

TEST(States, MadeUpWithoutEndAreForgotten) {
    TestApp app("App:\n    A << Corvel/Text:\n        Text: \"t\" @S7: \"seven\"\n");
    for (int i = 0; i < 10000; ++i) {
        app->add_state("App", "S" + std::to_string(i));
        app->render_patches();
        app->remove_state("App", "S" + std::to_string(i));
    }
    app->add_state("App", "S7");
    EXPECT_EQ(find_node(app->build_render_tree(), "App/A")->text, "seven");
}

TEST(Depth, OfTheTreeIsLimited) {
    TestApp app("App\n");
    Layers::LLayer* layer = app->engine().find_layer("App");
    for (int i = 0; i < 100000; ++i)
        layer =
            static_cast<Layers::LLayer*>(layer->add_child(std::make_unique<Layers::LLayer>("D")));
    app->render_patches();
    EXPECT_TRUE(app->render_patches().empty());
    const RenderNode tree = app->build_render_tree();
    int depth = 0;
    for (const RenderNode* node = &tree; !node->children.empty(); node = &node->children[0])
        ++depth;
    EXPECT_EQ(depth, max_render_depth);
}

TEST(EditorTexts, FollowThePatchesInOrderAndOnce) {
    TestApp app("App:\n    E << Corvel/Editor\n");
    app->queue_editor_text("App/E", "early");
    app->render_patches();
    app->queue_editor_text("App/E", "one");
    app->queue_editor_text("App/Missing", "two");
    app->set_text("App/E", "text");
    const auto patches = app->render_patches();
    ASSERT_EQ(patches.size(), 3u);
    EXPECT_EQ(patches[0].kind, PatchKind::Update);
    EXPECT_EQ(patches[1].kind, PatchKind::SetEditorText);
    EXPECT_EQ(patches[1].node.text, "one");
    EXPECT_EQ(patches[2].path, "App/Missing");
    EXPECT_TRUE(app->render_patches().empty());
}

TEST(Roots, CanChange) {
    TestApp app("App:\n    A << Corvel/Text\nOther:\n    A << Corvel/Icon\n    B << Corvel/Box\n");
    app->render_patches();
    app->set_root("Other");
    const auto patches = app->render_patches();
    ASSERT_EQ(patches.size(), 2u); // the roots themselves look the same
    EXPECT_EQ(patches[0].kind, PatchKind::Replace);
    EXPECT_EQ(patches[0].path, "Other/A");
    EXPECT_EQ(patches[0].parent_path, "Other");
    EXPECT_EQ(patches[1].kind, PatchKind::Add);
    app->set_root("Nowhere");
    app->render_patches();
    EXPECT_TRUE(app->render_patches().empty());
}

} // namespace
} // namespace Corvel
