#include "layers/engine.h"
#include "runtime/app_fixture.h"
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

TEST(State, AListThatIsOnlyShownHasNoKey) {
    TestApp app("App:\n Bind: \"List:shown\"\n Row\n");
    app->render_patches();
    app->set_rows("filled", {});
    EXPECT_EQ(app->list_keys(), std::set<std::string>{"filled"});
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

TEST(Viewport, LeavingNarrowShowsTheControls) {
    TestApp app("App:\n Size.Width: 0 @ControlsHidden: 5\n");
    EXPECT_FALSE(app->set_viewport_width(901)); // as at the start
    EXPECT_TRUE(app->set_controls_hidden(true));
    EXPECT_FALSE(app->set_controls_hidden(true));
    EXPECT_FALSE(app->set_viewport_width(950)); // a width of the same state leaves them hidden
    EXPECT_EQ(app.node("App").style->width, 5);
    EXPECT_TRUE(app->set_viewport_width(900));
    EXPECT_EQ(app.node("App").style->width, 0);
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
    TestApp app("App:\n Part:\n  Size.Height Viewport: 0.5\n"
                " Gone:\n  Visible: 0 @On: 1\n  Size.Height Viewport: 1\n");
    EXPECT_FALSE(app->set_viewport_height(300)); // no tree yet
    app->render_patches();
    EXPECT_TRUE(app->set_viewport_height(300.6));
    EXPECT_FALSE(app->set_viewport_height(301.4));
    app->set_visible("App/Part", false);
    app->render_patches();
    EXPECT_FALSE(app->set_viewport_height(500)); // the node left out does not count
}

} // namespace
} // namespace Corvel
