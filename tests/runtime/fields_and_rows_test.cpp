#include "runtime/app_fixture.h"
#include "runtime/binds.h"

#include <gtest/gtest.h>

namespace Corvel {
namespace {

using TestSupport::TestApp;
using TestSupport::theme_text;
using Fields = std::map<std::string, std::string>;

TEST(Binds, AreSplitAtSemicolonsUnlessTheyAreLists) {
    EXPECT_EQ(parse_binds("ThemeList").mode, ChildMode::Themes);
    EXPECT_EQ(parse_binds("ThemeList ").mode, ChildMode::Layers);
    EXPECT_EQ(parse_binds(" List:a").mode, ChildMode::Layers);
    EXPECT_EQ(parse_binds("List:a; State:S:k").list_key, "a; State:S:k");
    const Binds binds = parse_binds("Grow:g;\tField: k ;;Nothing;field:x;State:a:b:c;State:none");
    ASSERT_EQ(binds.pieces.size(), 3u);
    EXPECT_EQ(binds.pieces[0].kind, BindKind::Grow);
    EXPECT_EQ(binds.pieces[1].key, " k");
    EXPECT_EQ(binds.pieces[2].state, "a");
    EXPECT_EQ(binds.pieces[2].key, "b:c");
}

TEST(Binds, NumbersAreReadFromTheFront) {
    const std::pair<const char*, double> numbers[] = {
        {"4", 4}, {" \t-2.5px", -2.5}, {"+.5", 0.5}, {"1e3x", 1000}, {"0x10", 16}, {"12,5", 12}};
    for (const auto& [text, number] : numbers)
        EXPECT_EQ(leading_number(text), number) << text;
    for (const char* text : {"", " ", "px4", "-", ".", "e5", "1e999", "-1e999"})
        EXPECT_FALSE(leading_number(text)) << text;
}

/// The node of a row that has `fields`; one of another path if it is left out.
RenderNode bound(const std::string& kind, const std::string& attributes, const Fields& fields) {
    TestApp app("App:\n List:\n  Bind: \"List:l\"\n  Row:\n   N << Corvel/" + kind + ":\n" +
                attributes);
    app->set_rows("l", {{"r", fields}});
    return app.node("App/List/r/N");
}

TEST(Fields, DecideByKindWhatIsShown) {
    const std::string bind = "    Bind: \"Field:k\"\n    Source: \"own\"\n";
    for (const char* kind : {"Text", "Button", "Editor", "Box"}) {
        EXPECT_EQ(bound(kind, bind, {}).path, "") << kind;
        EXPECT_EQ(bound(kind, bind, {{"k", ""}}).path, "App/List/r/N") << kind;
        EXPECT_EQ(bound(kind, bind, {{"k", "\xff\x01"}}).text, "\xff\x01") << kind;
    }
    for (const char* kind : {"Image", "Video"}) {
        EXPECT_EQ(bound(kind, bind, {}).path, "") << kind;
        EXPECT_EQ(bound(kind, bind, {{"k", ""}}).path, "") << kind;
        const RenderNode shown = bound(kind, bind + "    Visible: 0\n", {{"k", "pic"}});
        EXPECT_EQ(shown.style->effective_source, "pic") << kind; // a source makes it visible
        EXPECT_EQ(shown.style->source, "own") << kind;
    }
    EXPECT_EQ(bound("Icon", bind, {}).style->source, "own");
    EXPECT_EQ(bound("Icon", bind, {{"k", ""}}).style->source, "own");
    EXPECT_EQ(bound("Icon", bind, {{"k", "star"}}).style->source, "star");
}

TEST(Fields, SetNumbersThatFit) {
    const struct {
        const char* value;
        double above_zero; ///< from 5
        double from_zero;  ///< from 5
    } cases[] = {{"7.5 px", 7.5, 7.5}, {"0", 5, 0},     {"-1", 5, 5}, {"", 5, 5},
                 {"word", 5, 5},       {"1e999", 5, 5}, {"-0", 5, 0}};
    const std::string attributes = "    Bind: \"MaxWidth:k;Aspect:k;Indent:k;Grow:k\"\n"
                                   "    Size.Max Width: 5\n    Aspect Ratio: 5\n"
                                   "    Margins.Left: 5\n    Layout.Grow: 5\n";
    for (const auto& c : cases) {
        const RenderNode node = bound("Box", attributes, {{"k", c.value}});
        EXPECT_EQ(node.style->max_width, c.above_zero) << c.value;
        EXPECT_EQ(node.style->aspect_ratio, c.above_zero) << c.value;
        EXPECT_EQ(node.style->margin_left, c.above_zero) << c.value;
        EXPECT_EQ(node.style->layout_grow, c.from_zero) << c.value;
    }
}

TEST(Fields, SetTextsSwitchesAndStates) {
    const std::string attributes =
        "    Bind: \"Href:h;Placeholder:p;Opacity:o;State:On:s;State:Off:o\"\n    Href: \"own\"\n"
        "    Placeholder: \"own\"\n    Size.Width: 1 @On: 2 @Off: 4 @On & Off: 8\n";
    const RenderNode empty = bound("Editor", attributes, {{"h", ""}, {"s", "false"}});
    EXPECT_EQ(empty.style->href, "own");
    EXPECT_EQ(empty.style->placeholder, "own");
    EXPECT_EQ(empty.style->opacity, 0);
    EXPECT_EQ(empty.style->width, 1);
    const RenderNode full =
        bound("Editor", attributes, {{"h", "x"}, {"p", "y"}, {"o", "0.5"}, {"s", "False"}});
    EXPECT_EQ(full.style->href, "x");
    EXPECT_EQ(full.style->placeholder, "y");
    EXPECT_EQ(full.style->opacity, 1);
    EXPECT_EQ(full.style->width, 8);
}

TEST(Fields, OutsideAListOnlyHide) {
    TestApp app("App:\n A << Corvel/Text:\n  Bind: \"Field:k\"\n"
                " B << Corvel/Text:\n  Bind: \"Opacity:k;Grow:k;State:S:k\"\n"
                " C << Corvel/Icon:\n  Bind: \"Field:k\"\n"
                " D << Corvel/Image:\n  Bind: \"Field:k\"\n");
    EXPECT_EQ(app.children("App"), "B;C;");
    EXPECT_EQ(app.node("App/B").style->opacity, 1);
}

TEST(Rows, HavePlacesStatesAndSeparators) {
    TestApp app("App:\n List:\n  Bind: \"List:l\"\n"
                "  Row:\n   Size.Width: 0 @First: 1 @Last: 2 @First & Last: 3\n   Visible: 0\n"
                "  Line:\n   Visible: 1 @Bare: 0\n   Size.Width: 0 @First: 9 @Last: 9\n"
                "  Third\n");
    const auto width = [&](const std::string& row) {
        return app.node("App/List/" + row).style->width;
    };
    EXPECT_EQ(app.children("App/List"), "");
    app->set_rows("l", {{"a", {}}});
    EXPECT_EQ(app.children("App/List"), "a;"); // shown though not visible
    EXPECT_EQ(width("a"), 3);

    app->set_rows("l", {{"a", {}}, {"b/c", {}}, {"", {}}});
    EXPECT_EQ(app.children("App/List"), "a;a:sep;b/c;b/c:sep;;");
    EXPECT_EQ(width("a"), 1);
    EXPECT_EQ(width("b/c"), 0);
    EXPECT_EQ(width(""), 2);
    EXPECT_EQ(width("a:sep"), 0);

    app->add_state("App/List/a:sep", "Bare");
    app->set_visible("App/List/a", false); // a row cannot be hidden by its path
    app->set_visible("App/List/b/c:sep", false);
    EXPECT_EQ(app.children("App/List"), "a;b/c;b/c:sep;;");
}

TEST(Rows, AreShownByEveryNodeOfTheirKey) {
    TestApp app("App:\n A:\n  Bind: \"List:l\"\n  Row:\n   Inner:\n    Bind: \"List:m\"\n"
                "    R << Corvel/Text:\n     Bind: \"Field:k\"\n"
                " B:\n  Bind: \"List:l\"\n  Row\n C:\n  Bind: \"List:l\"\n");
    app->set_rows("l", {{"1", {{"k", "outer"}}}, {"2", {}}});
    app->set_rows("m", {{"x", {{"k", "inner"}}}, {"y", {}}});
    EXPECT_EQ(app.children("App/A"), "1;2;");
    EXPECT_EQ(app.children("App/B"), "1;2;");
    EXPECT_EQ(app.children("App/C"), "");
    EXPECT_EQ(app.node("App/A/1/Inner/x").text, "inner");
    EXPECT_FALSE(app.node("App/A/2/Inner/y").style->visible);
}

TEST(Rows, OfOnePathAllHearOfIt) {
    TestApp app("App:\n List:\n  Bind: \"List:l\"\n  Row << Corvel/Text\n");
    const auto texts = [&](const std::string& text) {
        app->set_text("App/List/a", text);
        std::string all;
        for (const RenderNode& row : app.node("App/List").children)
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
}

TEST(Rows, OfHiddenListsAndSeparatorsHaveTargetsAsTheyChange) {
    TestApp app("App:\n Gone:\n  Visible: 0\n  List:\n   Bind: \"List:l\"\n"
                "   Row << Corvel/Button:\n    Intent: \"list:open\"\n"
                "   Between << Corvel/Button:\n    Intent: \"list:add:l\"\n");
    std::string clicked;
    app->on_row_click("l", [&](const auto&, const auto& item, const auto& action) {
        clicked += action + item + ";";
    });
    const auto click_all = [&](std::vector<ListEntry> rows) {
        clicked.clear();
        app->set_rows("l", std::move(rows));
        app->render_patches();
        for (const char* row : {"a", "a:sep", "b", "b:sep"})
            app->dispatch_event(std::string("App/Gone/List/") + row, "click");
        return clicked;
    };
    EXPECT_EQ(click_all({{"a", {}}, {"b", {}}}), "opena;add;openb;");
    EXPECT_EQ(click_all({{"a", {}}}), "opena;");
    EXPECT_EQ(click_all({{"b", {}}, {"a", {}}}), "opena;openb;add;");
    EXPECT_EQ(click_all({}), "");
}

TEST(ThemeCards, ShowTheColoursOfTheirThemes) {
    TestApp app("App:\n Cards:\n  Bind: \"ThemeList\"\n  Card << Corvel/Button:\n"
                "   Fill: \"style\"\n   Name << Corvel/Text:\n    Bind: \"ThemeName\"\n"
                "   By << Corvel/Box:\n    Bind: \"ThemePublisher\"\n    Text Color: \"style\"\n"
                "    Dot << Corvel/Icon\n"
                " Now << Corvel/Text:\n  Bind: \"ActiveThemeName;ThemeName\"\n"
                " By << Corvel/Text:\n  Bind: \"ActiveThemePublisher\"\n"
                " Page << Corvel/Markdown\n",
                {theme_text("A", R"("Primary": "#p", "Foreground": "#f", "Tertiary": "#t",
                                    "Secondary": "#s", "_meta": {"publisher": "pub"})"),
                 theme_text("B", "\"Foreground\": 4")});
    EXPECT_EQ(app.children("App/Cards"), "A (pub);B;");
    const RenderNode active = app.node("App/Cards/A (pub)");
    EXPECT_EQ(active.style->fill, (Fill{"#p", false}));
    EXPECT_EQ(active.style->border_fill, (Fill{"#f", false}));
    EXPECT_EQ(active.style->border_thickness, 3);
    EXPECT_EQ(active.children[0].text, "A");
    EXPECT_EQ(active.children[0].style->text_color, "#f");
    EXPECT_EQ(active.children[1].text, "pub");
    EXPECT_EQ(active.children[1].style->text_color, "style");
    EXPECT_EQ(active.children[1].children[0].style->text_color, "#f");
    const RenderNode other = app.node("App/Cards/B");
    EXPECT_EQ(other.style->fill, Fill()); // the theme names no such colour; defaults are for styles
    EXPECT_EQ(other.style->border_thickness, 1);
    EXPECT_EQ(app.node("App/Now").text, "A");
    EXPECT_EQ(app.node("App/By").text, "pub");
    EXPECT_EQ(app.node("App/Page").style->secondary_text_color, "#s");

    int clicks = 0;
    app->render_patches();
    app->on_click("App/Cards/B", [&] { ++clicks; });
    app->dispatch_event("App/Cards/B", "click");
    EXPECT_EQ(app->active_theme(), "B");
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(app.node("App/Now").text, "B");
    app->remove_theme("A (pub)");
    app->add_theme_text(theme_text("C", ""));
    EXPECT_EQ(app.children("App/Cards"), "B;C;");
    app->render_patches();
    app->dispatch_event("App/Cards/A (pub)", "click");
    EXPECT_EQ(app->active_theme(), "B");
}

} // namespace
} // namespace Corvel
