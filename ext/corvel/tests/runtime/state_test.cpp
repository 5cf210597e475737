#include "layers/engine.h"
#include "runtime/app_fixture.h"
#include "runtime/layer_plan.h"
#include "runtime/render_builder.h"

#include <gtest/gtest.h>

namespace Corvel {
namespace {

using TestSupport::TestApp;
using Log = std::vector<std::string>;

TEST(Nodes, OfAnyDepthAreLimited) {
    TestApp app("App\n");
    Layers::LLayer* layer = app->engine().find_layer("App");
    for (int i = 0; i < 100000; ++i)
        layer = layer->add_child(std::make_unique<Layers::LLayer>("D"))->as_layer();
    app->render_patches();
    EXPECT_TRUE(app->render_patches().empty());
    const RenderNode tree = app->build_render_tree();
    int depth = 0;
    for (const RenderNode* node = &tree; !node->children.empty(); node = &node->children[0])
        ++depth;
    EXPECT_EQ(depth, MAX_RENDER_DEPTH);
}

TEST(State, StatesMadeUpWithoutEndAreForgotten) {
    TestApp app("App:\n Size.Width: 0 @S7: 7\n");
    for (int i = 0; i < 10000; ++i) {
        app->add_state("App", "S" + std::to_string(i));
        app->render_patches();
        app->remove_state("App", "S" + std::to_string(i));
    }
    app->add_state("App", "S7");
    EXPECT_EQ(app.node("App").style->width, 7);
}

TEST(State, OfTheStoreIsAbsentWhenEmpty) {
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

TEST(Events, HandlersMayReplaceThemselvesAndRender) {
    TestApp app("App:\n Plain << Corvel/Button\n List:\n  Bind: \"List:l\"\n"
                "  Row << Corvel/Button:\n   Intent: \"list:open\"\n");
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

TEST(Styles, HoldAKindWhereALayerBesidesThePrototypeIsOfIt) {
    TestApp without("App:\n Plain << Corvel/Button\n");
    EXPECT_FALSE(holds_kind(without->engine().root(), NodeKind::Video));
    for (const char* style :
         {"App:\n Page:\n  Clip << Corvel/Video\n", "Shared << Corvel/Video\n", "App:\n Video\n"}) {
        TestApp with(style);
        EXPECT_TRUE(holds_kind(with->engine().root(), NodeKind::Video)) << style;
    }
}

} // namespace
} // namespace Corvel
