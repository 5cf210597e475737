#include "runtime/app_fixture.h"

#include <gtest/gtest.h>

namespace Corvel {
namespace {

using TestSupport::TestApp;
using Log = std::vector<std::string>;

TEST(Events, UnknownOnesAndEmptyHandlersDoNothing) {
    CorvelApp app;
    app.on_click("p", nullptr);
    app.on_scan("p", nullptr);
    app.on_input("p", nullptr);
    for (const char* event : {"", "click ", "Click", "hover", "scan:x", "scanstatus:x", "click",
                              "input:a:b", "select:x"})
        app.dispatch_event("p", event);
    EXPECT_EQ(app.input_value("p"), "a:b");
    EXPECT_EQ(app.input_value("q"), "");
    EXPECT_FALSE(app.has_input_value("q")); // not made by reading
    app.set_input_value("q", "");
    EXPECT_TRUE(app.has_input_value("q"));
}

TEST(Events, ScanResultsAndStatusLines) {
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

TEST(Events, AListenerReadsTheRowsThatItWasToldOf) {
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

TEST(Events, PickWithoutAPickerIsCancelled) {
    CorvelApp app;
    Log log;
    const auto note = [&](const std::string& path) { log.push_back("[" + path + "]"); };
    app.pick_file({}, note);
    app.pick_file({}, nullptr);
    app.file_pick = [](const PickRequest& request, CorvelApp::TextHandler done) {
        done(request.title);
    };
    app.pick_file({"", "title", "", "", false}, note);
    EXPECT_EQ(log, Log({"[]", "[title]"}));
}

class Clicks : public testing::Test {
protected:
    CorvelApp::RowHandler handler(const std::string& word) {
        return [this, word](const auto& key, const auto& item, const auto& action) {
            log.push_back(word + " " + key + "|" + item + "|" + action);
        };
    }

    TestApp app{"App:\n Check << Corvel/Check Box\n"
                " Add << Corvel/Button:\n  Intent: \"list:add:l\"\n"
                " Plain << Corvel/Button:\n  Intent: \"list:add\"\n"
                " Box:\n  Intent: \"list:add:l\"\n"
                " List:\n  Bind: \"List:l\"\n"
                "  Row << Corvel/Button:\n   Intent: \"list:open\"\n"
                "   Check << Corvel/Check Box\n"};
    Log log;
};

TEST_F(Clicks, ACheckBoxTogglesBeforeItsHandler) {
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

TEST_F(Clicks, RowTargetsWinOverClickHandlers) {
    const char* const paths[] = {"App/List/r", "App/Add", "App/Plain", "App/Box"};
    for (const char* path : paths)
        app->on_click(path, [this, path] { log.push_back(std::string("click ") + path); });
    app->set_rows("l", {{"r", {}}});
    app->dispatch_event("App/List/r", "click"); // no render yet
    app->render_patches();
    app->dispatch_event("App/List/r", "click"); // nobody listens to rows
    app->on_any_row_click = handler("any");
    for (const char* path : paths)
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

TEST_F(Clicks, HandlersMayReplaceThemselvesAndRender) {
    app->set_rows("l", {{"r", {}}});
    app->render_patches();
    const auto words = std::make_shared<std::string>("alive");
    std::string after;
    app->on_click("App/Plain", [this, &after, words] {
        app->on_click("App/Plain", nullptr);
        after = *words;
    });
    app->dispatch_event("App/Plain", "click");
    EXPECT_EQ(after, "alive");
    app->on_row_click("l", [this, &after, words](const auto& key, const auto& item, const auto&) {
        app->set_rows("l", {});
        app->render_patches();
        app->on_row_click("l", nullptr);
        after = key + item + *words;
    });
    app->dispatch_event("App/List/r", "click");
    EXPECT_EQ(after, "lralive");
}

} // namespace
} // namespace Corvel
