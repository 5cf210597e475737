#include "view_fixture.h"

namespace ViewTest {
namespace {

class ViewPatches : public ViewFixture {};

TEST_F(ViewPatches, PatchesThatComeInMeanwhileAreAppliedAfterwards) {
    const auto bar = [](double height) {
        return box("Bar", {.height = height, .overlay = "PinnedBottom"});
    };
    show(box("App", {}, {bar(20)}));
    widget<VBoxWidget>("App/Bar")->on_resize = [&] {
        EXPECT_TRUE(state.queue.applying);
        view.apply_patches({removal("App/Late")});
    };
    apply({update("App", bar(50)), add("App", text("Late", "l"), 1)});
    EXPECT_EQ(view.widget_at("App/Late"), nullptr);
    // A render could end the bar that is being placed.
    widget<VBoxWidget>("App/Bar")->on_resize = [&] { state.render_now(); };
    window->resize(500, 400);
    EXPECT_TRUE(state.render_pending);
}

TEST_F(ViewPatches, ALongListComesInPortionsAndIsWholeForTheNextPatch) {
    constexpr int ROWS = 700;
    const auto row = [](int i) {
        return box("Row " + std::to_string(i), {}, {box("A"), box("B"), text("C", "c")});
    };
    std::vector<RenderNode> rows;
    std::vector<std::string> names;
    for (int i = 0; i < ROWS; ++i) {
        rows.push_back(row(i));
        names.push_back("Row " + std::to_string(i));
    }
    show(box("App", {}, {text("Words", "w")}));
    const auto fill = [&] {
        view.apply_patches({removal("App/List"), add("App", box("List", {}, rows), 1)});
        EXPECT_TRUE(state.nodes.contains("App/List/Row 39/C"));
        EXPECT_FALSE(state.nodes.contains("App/List/Row 699"));
    };
    fill();
    EXPECT_TRUE(QTest::qWaitFor([&] { return state.nodes.contains("App/List/Row 699/C"); }));
    EXPECT_EQ(laid_out("App/List"), names);

    // As a part of a new tree, and row by row; what comes next finds all that went before.
    fill();
    apply({removal("App/List/Row 500"), add("App/List", box("New"), 650)});
    names.erase(names.begin() + 500);
    names.insert(names.begin() + 650, "New");
    EXPECT_EQ(laid_out("App/List"), names);

    view.apply_patches({removal("App/List"), add("App", box("List"), 1)});
    std::vector<RenderPatch> patches;
    for (int i = 0; i < ROWS; ++i)
        patches.push_back(add("App/List", row(i), i));
    patches.push_back(update("App/List/Row 699", text("C", "new")));
    view.apply_patches(patches);
    EXPECT_FALSE(state.nodes.contains("App/List/Row 699"));
    apply({update("App", text("Words", "other"))});
    EXPECT_EQ(laid_out("App/List").size(), std::size_t{ROWS});
    EXPECT_EQ(widget<WrapLabel>("App/List/Row 699/C")->text(), QStringLiteral("new"));

    fill(); // what lies elsewhere does not hurry it, who asks for a row gets it
    view.apply_patches({update("App", text("Words", "status"))});
    EXPECT_FALSE(state.nodes.contains("App/List/Row 699"));
    EXPECT_NE(view.widget_at("App/List/Row 699/C"), nullptr);
    EXPECT_EQ(laid_out("App/List").size(), std::size_t{ROWS});

    fill(); // and what goes before it was made is not made
    view.apply_patches({removal("App/List"), add("App", box("Other"), 1)});
    EXPECT_EQ(state.queue.nodes_made, 1U);
    EXPECT_TRUE(state.queue.later.empty());

    fill();
    apply({removal("App")}); // nothing is made for a list that is gone
    QTest::qWait(50);
    EXPECT_TRUE(state.nodes.empty());
}

} // namespace
} // namespace ViewTest
