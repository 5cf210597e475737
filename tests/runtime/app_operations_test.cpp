#include "runtime/app_fixture.h"

#include <gtest/gtest.h>

namespace Corvel {
namespace {

using TestSupport::find_node;
using TestSupport::TestApp;
using Log = std::vector<std::string>;

TEST(AppState, TextSetBeforeItsRowExistsShowsWithTheRow) {
    TestApp app(
        "App:\n    List:\n        Bind: \"List:l\"\n"
        "        Row:\n            Label << Corvel/Text:\n                Text: \"style\"\n");
    app->set_text("App/List/a/Label", "kept");
    app->render_patches();
    app->set_rows("l", {{"a", {}}, {"b", {}}});
    const RenderNode tree = app->build_render_tree();
    EXPECT_EQ(find_node(tree, "App/List/a/Label")->text, "kept");
    EXPECT_EQ(find_node(tree, "App/List/b/Label")->text, "style");
}

TEST(AppState, AHiddenNodeComesBackWithAllThatItHad) {
    TestApp app("App:\n    Field << Corvel/Editor:\n        Text: \"a\" @On: \"b\"\n"
                "        Inner << Corvel/Text:\n            Text: \"x\"\n");
    app->add_state("App/Field", "On");
    app->set_text("App/Field/Inner", "typed");
    app->render_patches();
    app->set_visible("App/Field", false);
    EXPECT_EQ(app->render_patches().size(), 1u);
    EXPECT_EQ(find_node(app->build_render_tree(), "App/Field"), nullptr);
    app->set_visible("App/Field", true);
    const RenderNode tree = app->build_render_tree();
    EXPECT_EQ(find_node(tree, "App/Field")->text, "b");
    EXPECT_EQ(find_node(tree, "App/Field/Inner")->text, "typed");
}

TEST(AppState, EmptyValuesOfOverrides) {
    TestApp app("App:\n    N << Corvel/Image:\n        Text: \"t\"\n        Source: \"s\"\n"
                "        Href: \"h\"\n        Data: \"d\"\n        Size.Height: 5\n");
    const std::string path = "App/N";
    app->set_text(path, "");
    app->set_source(path, "other");
    app->set_href(path, "");
    app->set_data(path, "");
    app->set_height(path, 7);
    RenderNode tree = app->build_render_tree();
    const RenderNode& node = *find_node(tree, path);
    EXPECT_EQ(node.text, "");
    EXPECT_EQ(node.style->source, "s");
    EXPECT_EQ(node.style->effective_source, "other");
    EXPECT_EQ(node.style->href, "");
    EXPECT_EQ(node.style->data, "");
    EXPECT_EQ(node.style->height, 7);

    app->set_source(path, "");
    app->set_height(path, 0);
    tree = app->build_render_tree();
    EXPECT_EQ(find_node(tree, path)->style->effective_source, "s");
    EXPECT_EQ(find_node(tree, path)->style->height, 5);
}

TEST(AppState, InputValuesAreNotMadeByReading) {
    CorvelApp app;
    EXPECT_EQ(app.input_value("p"), "");
    EXPECT_FALSE(app.has_input_value("p"));
    app.set_input_value("p", "");
    EXPECT_TRUE(app.has_input_value("p"));
    app.dispatch_event("q", "input:a:b");
    EXPECT_EQ(app.input_value("q"), "a:b");
}

TEST(AppState, CheckedIsAState) {
    CorvelApp app;
    EXPECT_FALSE(app.is_checked("p"));
    app.set_checked("p", true);
    app.set_checked("p", true);
    EXPECT_TRUE(app.is_checked("p"));
    app.toggle_state("p", "Checked");
    EXPECT_FALSE(app.is_checked("p"));
    app.set_checked("p", false);
    EXPECT_FALSE(app.is_checked("p"));
}

TEST(AppOptions, SelectionIsAlwaysOneOfThem) {
    CorvelApp app;
    Log log;
    app.on_select("c", [&](const std::string& value) { log.push_back(value); });
    app.set_options("c", {});
    EXPECT_EQ(app.selected("c"), "");
    app.set_options("c", {{"a", "A"}, {"b", "B"}});
    EXPECT_EQ(app.selected("c"), "a");
    app.set_selected("c", "b");
    app.set_selected("c", "none");
    app.set_selected("other", "b");
    EXPECT_EQ(app.selected("c"), "b");
    EXPECT_EQ(app.selected("other"), "");
    app.set_options("c", {{"x", ""}, {"b", ""}});
    EXPECT_EQ(app.selected("c"), "b");
    app.set_options("c", {{"x", ""}, {"y", ""}});
    EXPECT_EQ(app.selected("c"), "x");
    EXPECT_EQ(log, Log());

    for (const char* event : {"select:none", "select:x", "select:y", "select:y", "select:"})
        app.dispatch_event("c", event);
    EXPECT_EQ(log, Log({"y"}));
    app.set_options("c", {});
    EXPECT_EQ(app.selected("c"), "");
}

TEST(AppEvents, UnknownEventsAndEmptyHandlersDoNothing) {
    CorvelApp app;
    app.on_click("p", nullptr);
    app.on_scan("p", nullptr);
    app.on_input("p", nullptr);
    for (const char* event :
         {"", "click ", "Click", "hover", "scan:x", "scanstatus:x", "click", "input:x", "select:x"})
        app.dispatch_event("p", event);
    EXPECT_EQ(app.input_value("p"), "x");
}

TEST(AppEvents, ScanResultsAndStatusLines) {
    CorvelApp app;
    Log log;
    app.on_scan("p", [&](const std::string& text) { log.push_back("scan " + text); });
    app.scan_status_hook = [&](const std::string& path, const std::string& text) {
        log.push_back(path + " status " + text);
    };
    app.dispatch_event("p", "scan:1:2");
    app.dispatch_event("q", "scan:3");
    app.dispatch_event("q", "scanstatus:ready");
    EXPECT_EQ(log, Log({"scan 1:2", "q status ready"}));
}

const std::string clickable = "App:\n"
                              "    Check << Corvel/Check Box\n"
                              "    Add << Corvel/Button:\n        Intent: \"list:add:l\"\n"
                              "    Plain << Corvel/Button:\n        Intent: \"list:add\"\n"
                              "    Box:\n        Intent: \"list:add:l\"\n"
                              "    List:\n        Bind: \"List:l\"\n"
                              "        Row << Corvel/Button:\n            Intent: \"list:open\"\n"
                              "            Check << Corvel/Check Box\n";

TEST(AppClicks, CheckBoxTogglesBeforeItsHandler) {
    TestApp app(clickable);
    app->render_patches();
    app->dispatch_event("App/Check", "click");
    EXPECT_TRUE(app->is_checked("App/Check"));
    bool seen = true;
    app->on_click("App/Check", [&] { seen = app->is_checked("App/Check"); });
    app->dispatch_event("App/Check", "click");
    EXPECT_FALSE(seen);
    app->set_visible("App/Check", false);
    app->render_patches();
    app->dispatch_event("App/Check", "click"); // no check box of the tree any more
    EXPECT_FALSE(app->is_checked("App/Check"));
}

TEST(AppClicks, RowTargetsWinOverClickHandlers) {
    TestApp app(clickable);
    Log log;
    auto handler = [&log](const std::string& word) {
        return [&log, word](const std::string& key, const std::string& item,
                            const std::string& action) {
            log.push_back(word + " " + key + "|" + item + "|" + action);
        };
    };
    for (const char* path : {"App/List/r", "App/Add", "App/Plain", "App/Box"})
        app->on_click(path, [&log, path] { log.push_back(std::string("click ") + path); });
    app->set_rows("l", {{"r", {}}});
    app->dispatch_event("App/List/r", "click"); // no render yet
    app->render_patches();
    app->dispatch_event("App/List/r", "click"); // nobody listens to rows
    app->on_any_row_click = handler("any");
    for (const char* path : {"App/List/r", "App/Add", "App/Plain", "App/Box"})
        app->dispatch_event(path, "click");
    app->on_row_click("l", handler("own"));
    app->dispatch_event("App/List/r", "click");
    app->on_row_click("l", nullptr);
    app->dispatch_event("App/List/r", "click");
    EXPECT_EQ(log, Log({"click App/List/r", "any l|r|open", "any l||add", "click App/Plain",
                        "click App/Box", "own l|r|open"}));
    app->dispatch_event("App/List/r/Check", "click");
    EXPECT_TRUE(app->is_checked("App/List/r/Check"));
}

TEST(AppClicks, HandlersMayReplaceThemselvesAndRender) {
    TestApp app(clickable);
    app->set_rows("l", {{"r", {}}});
    app->render_patches();
    const auto words = std::make_shared<std::string>("alive");
    std::string after;
    app->on_click("App/Plain", [&app, &after, words] {
        app->on_click("App/Plain", nullptr);
        after = *words;
    });
    app->dispatch_event("App/Plain", "click");
    EXPECT_EQ(after, "alive");
    app->on_row_click("l", [&app, &after, words](const auto& key, const auto& item, const auto&) {
        app->set_rows("l", {});
        app->render_patches();
        app->on_row_click("l", nullptr);
        after = key + item + *words;
    });
    app->dispatch_event("App/List/r", "click");
    EXPECT_EQ(after, "lralive");
}

TEST(AppRows, ListenerReadsTheListThatItWasToldOf) {
    CorvelApp app;
    Log log;
    app.on_rows("l", [&](const std::vector<ListEntry>& rows) {
        if (rows.size() == 2)
            app.set_rows("l", {{"only", {}}});
        for (const ListEntry& row : rows)
            log.push_back(row.id);
    });
    app.set_rows("l", {{"a", {}}, {"b", {}}});
    app.set_rows("other", {{"c", {}}});
    EXPECT_EQ(log, Log({"only", "a", "b"}));
}

TEST(AppServices, PickWithoutAPickerIsCancelled) {
    CorvelApp app;
    Log log;
    auto note = [&](const std::string& path) { log.push_back("[" + path + "]"); };
    app.pick_file({}, note);
    app.pick_file({}, nullptr);
    app.file_pick = [](const PickRequest& request, CorvelApp::TextHandler done) {
        done(request.title);
    };
    app.pick_file({"", "title", "", "", false}, note);
    EXPECT_EQ(log, Log({"[]", "[title]"}));
}

TEST(AppStore, EmptyMeansAbsent) {
    CorvelApp app;
    app.store_set("before", "kept"); // no slot yet
    Log log;
    app.store_write = [&](const std::string& key, const std::string& value) {
        log.push_back(key + "=" + value + "/" + app.store_get(key));
    };
    app.store_set("k", "v");
    app.store_set("k", "");
    app.store_set("never", "");
    EXPECT_EQ(app.store_get("before"), "kept");
    EXPECT_EQ(app.store.count("k") + app.store.count("never"), 0u);
    EXPECT_EQ(log, Log({"k=v/v", "k=/", "never=/"}));
}

struct Width {
    double width;
    const char* state;
};

TEST(Viewport, WidthsHaveStates) {
    TestApp app("App:\n    Size.Width: 0 @Narrow: 1 @Medium: 2 @ControlsHidden: 5\n");
    auto shown = [&] { return app->build_render_tree().style->width; };
    EXPECT_FALSE(app->set_viewport_width(901)); // as at the start
    const std::pair<double, double> widths[] = {{600, 1}, {601, 2}, {900, 2}, {900.5, 0}, {0, 1}};
    double last = 0;
    for (const auto& [width, state] : widths) {
        EXPECT_EQ(app->set_viewport_width(width), state != last) << width;
        EXPECT_EQ(shown(), state) << width;
        last = state;
    }
}

TEST(Viewport, LeavingNarrowShowsTheControls) {
    TestApp app("App:\n    Size.Width: 0 @ControlsHidden: 5\n");
    auto hidden = [&] { return app->build_render_tree().style->width == 5; };
    EXPECT_TRUE(app->set_controls_hidden(true));
    EXPECT_FALSE(app->set_controls_hidden(true));
    EXPECT_FALSE(app->set_viewport_width(950)); // never narrow: the early return leaves it
    EXPECT_TRUE(hidden());
    EXPECT_TRUE(app->set_viewport_width(900));
    EXPECT_FALSE(hidden());
}

TEST(Viewport, ScrollingAddsUpOnNarrowWindows) {
    CorvelApp app;
    EXPECT_FALSE(app.accumulate_scroll(1000));
    app.set_viewport_width(500);
    EXPECT_FALSE(app.accumulate_scroll(30)); // exactly the threshold
    EXPECT_TRUE(app.accumulate_scroll(0.5)); // hides, starts from zero
    EXPECT_FALSE(app.accumulate_scroll(31)); // hidden already, zeroed all the same
    EXPECT_FALSE(app.accumulate_scroll(-30));
    EXPECT_TRUE(app.accumulate_scroll(-1));
    EXPECT_FALSE(app.set_controls_hidden(false));
    EXPECT_FALSE(app.accumulate_scroll(20));
    app.set_viewport_width(1000); // forgets the distance
    app.set_viewport_width(500);
    EXPECT_FALSE(app.accumulate_scroll(20));
}

TEST(Viewport, HeightsMatterToNodesThatAskForThem) {
    TestApp app("App:\n    Part:\n        Size.Height Viewport: 0.5\n        Size.Height: 9\n"
                "    Gone:\n        Visible: 0 @On: 1\n        Size.Height Viewport: 1\n");
    auto height = [&] { return find_node(app->build_render_tree(), "App/Part")->style->height; };
    EXPECT_FALSE(app->set_viewport_height(300)); // no tree yet
    app->set_viewport_height(0);
    EXPECT_EQ(height(), 9);
    EXPECT_TRUE(app->set_viewport_height(300.6));
    EXPECT_FALSE(app->set_viewport_height(301.4));
    EXPECT_EQ(height(), 151); // 150.5 is rounded away from zero
    app->set_height("App/Part", 40);
    EXPECT_EQ(height(), 40);
    app->set_visible("App/Part", false);
    app->render_patches();
    EXPECT_FALSE(app->set_viewport_height(500)); // the node left out does not count
}

} // namespace
} // namespace Corvel
