#include "layers/engine.h"
#include "runtime/app_fixture.h"
#include "runtime/render_builder.h"

#include <gtest/gtest.h>

namespace Corvel {
namespace {

using TestSupport::TestApp;
using Log = std::vector<std::string>;

TEST(Nodes, HaveTheKindOfTheirBases) {
    TestApp app("Mine << Corvel/Check Box\nTwice << Mine\n"
                "App:\n A << Corvel/Button\n B << Twice\n C << Corvel/Nothing\n Icon\n"
                " E << Corvel/Combo Box\n Deep << Twice:\n  Text\n button\n"
                " Detail\n F << Corvel/Detail\n G << App/F\n");
    const std::pair<const char*, NodeKind> kinds[] = {
        {"App", NodeKind::Box},           {"App/A", NodeKind::Button},
        {"App/B", NodeKind::CheckBox},    {"App/C", NodeKind::Box},
        {"App/Icon", NodeKind::Icon},     {"App/E", NodeKind::ComboBox},
        {"App/Deep", NodeKind::CheckBox}, {"App/Deep/Text", NodeKind::Text},
        {"App/button", NodeKind::Box},
    };
    for (const auto& [path, kind] : kinds) {
        EXPECT_EQ(app.node(path).path, path);
        EXPECT_EQ(app.node(path).kind, kind) << path;
    }
    EXPECT_EQ(app.children("App"), "A;B;C;Icon;E;Deep;button;Detail;"); // no heirs of Detail
}

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
    EXPECT_EQ(depth, max_render_depth);
}

TEST(Nodes, TheRootCanChange) {
    TestApp app("App:\n A << Corvel/Text\nOther:\n A << Corvel/Icon\n B << Corvel/Box\n");
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

TEST(State, OfAbsentNodesIsKept) {
    TestApp app("App:\n List:\n  Bind: \"List:l\"\n  Row:\n   Label << Corvel/Text:\n"
                "    Text: \"style\"\n"
                " Field << Corvel/Editor:\n  Text: \"a\" @On: \"b\"\n  Inner << Corvel/Text\n");
    app->set_text("App/List/a/Label", "kept");
    app->render_patches();
    app->set_rows("l", {{"a", {}}, {"b", {}}});
    EXPECT_EQ(app.node("App/List/a/Label").text, "kept");
    EXPECT_EQ(app.node("App/List/b/Label").text, "style");

    app->add_state("App/Field", "On");
    app->set_text("App/Field/Inner", "typed");
    app->set_visible("App/Field", false);
    EXPECT_FALSE(app.shows("App/Field"));
    app->set_visible("App/Field", true);
    EXPECT_EQ(app.node("App/Field").text, "b");
    EXPECT_EQ(app.node("App/Field/Inner").text, "typed");
}

TEST(State, EmptyOverridesCountForSomeValues) {
    TestApp app("App << Corvel/Image:\n Text: \"t\"\n Source: \"s\"\n Href: \"h\"\n"
                " Data: \"d\"\n Size.Height: 5\n");
    app->set_text("App", "");
    app->set_source("App", "other");
    app->set_href("App", "");
    app->set_data("App", "");
    app->set_height("App", 7);
    RenderNode node = app.node("App");
    EXPECT_EQ(node.text, "");
    EXPECT_EQ(node.style->source, "s");
    EXPECT_EQ(node.style->effective_source, "other");
    EXPECT_EQ(node.style->href, "");
    EXPECT_EQ(node.style->data, "");
    EXPECT_EQ(node.style->height, 7);
    app->set_source("App", "");
    app->set_height("App", 0);
    node = app.node("App");
    EXPECT_EQ(node.style->effective_source, "s");
    EXPECT_EQ(node.style->height, 5);
}

TEST(State, StatesAreInheritedAndAddUp) {
    TestApp app("App:\n A:\n  Size.Width: 0 @P: 1 @G: 2 @G & P: 3 @G & P & Q: 4 @S7: 7\n");
    const auto width = [&] { return app.node("App/A").style->width; };
    app->add_state("App", "P");
    EXPECT_EQ(width(), 1);
    app->add_global_state("G");
    EXPECT_EQ(width(), 3);
    app->add_state("App/A", "Q");
    EXPECT_EQ(width(), 4);
    app->remove_state("App", "P");
    app->remove_state("App", "never");
    EXPECT_EQ(width(), 2);
    for (int i = 0; i < 10000; ++i) { // states made up without end are forgotten
        app->add_state("App", "S" + std::to_string(i));
        app->render_patches();
        app->remove_state("App", "S" + std::to_string(i));
    }
}

TEST(State, TheSelectionIsAlwaysOneOfTheOptions) {
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
    for (const char* event : {"select:none", "select:x", "select:y", "select:y", "select:"})
        app.dispatch_event("c", event);
    EXPECT_EQ(log, Log({"y"}));
}

TEST(State, EditorTextsFollowThePatchesInOrderAndOnce) {
    TestApp app("App:\n E << Corvel/Editor\n");
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

TEST(Viewport, WidthsHaveStates) {
    TestApp app("App:\n Size.Width: 0 @Narrow: 1 @Medium: 2 @ControlsHidden: 5\n");
    const auto shown = [&] { return app.node("App").style->width; };
    EXPECT_FALSE(app->set_viewport_width(901)); // as at the start
    double last = 0;
    for (const auto& [width, state] :
         {std::pair(600.0, 1), {601.0, 2}, {900.0, 2}, {900.5, 0}, {0.0, 1}, {950.0, 0}}) {
        EXPECT_EQ(app->set_viewport_width(width), state != last) << width;
        EXPECT_EQ(shown(), state) << width;
        last = state;
    }
    EXPECT_TRUE(app->set_controls_hidden(true));
    EXPECT_FALSE(app->set_controls_hidden(true));
    EXPECT_FALSE(app->set_viewport_width(960)); // a width of the same state leaves them hidden
    EXPECT_EQ(shown(), 5);
    EXPECT_TRUE(app->set_viewport_width(900));
    EXPECT_EQ(shown(), 2);
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
    EXPECT_FALSE(app.accumulate_scroll(20));
    app.set_viewport_width(1000); // forgets the distance
    app.set_viewport_width(500);
    EXPECT_FALSE(app.accumulate_scroll(20));
}

TEST(Viewport, HeightsMatterToNodesThatAskForThem) {
    TestApp app("App:\n Part:\n  Size.Height Viewport: 0.5\n  Size.Height: 9\n"
                " Gone:\n  Visible: 0 @On: 1\n  Size.Height Viewport: 1\n");
    const auto height = [&] { return app.node("App/Part").style->height; };
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
