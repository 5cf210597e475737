#include "layers/layers_support.h"
#include "layers/linker.h"

#include <gtest/gtest.h>

namespace Layers {
namespace {

TEST(Links, AreLookedUpOutwardsByName) {
    const LogCapture log;
    StyleTree tree("Gap: 1\nG.Gap: 2\nApp:\n  Gap: 3\n  Win:\n    a: Gap\n    b: G.Gap @S: Gap\n"
                   "    In:\n      Gap: 4\n      c: Gap\n");
    tree.link();
    EXPECT_EQ(tree.value("App/Win/a"), "3");
    EXPECT_EQ(tree.value("App/Win/b"), "2");
    EXPECT_EQ(tree.value("App/Win/b", {"S"}), "3");
    EXPECT_EQ(tree.value("App/Win/In/c"), "4");
}

TEST(Links, WithAPathStartAtTheTopLayerThenAtTheRoot) {
    const LogCapture log;
    StyleTree tree("T:\n  x: 1\n  y: 2\nU:\n  x: 5\nApp:\n  Win:\n    T:\n      x: 3\n    In:\n"
                   "      a: T/x\n      b: U/x\n");
    tree.link();
    EXPECT_EQ(tree.value("App/Win/In/a"), "3");
    EXPECT_EQ(tree.value("App/Win/In/b"), "5");
}

TEST(Links, ThatLeadNowhereAreLogged) {
    LogCapture log;
    // The layer that the top layer has hides the one of the root, although the attribute is there.
    StyleTree tree("T:\n  y: 2\nApp:\n  Win:\n    T:\n      x: 3\n    a: T/y\n    b: x @S: No/x\n"
                   "top: missing\n");
    tree.link();
    EXPECT_EQ(log.take(), (std::vector<std::string>{
                              "engine: unresolved link `missing` on attribute `/top`.",
                              "engine: unresolved link `T/y` on attribute `App/Win/a`.",
                              "engine: unresolved link `x` on attribute `App/Win/b`.",
                              "engine: unresolved link `No/x` on attribute `App/Win/b.S`."}));
    EXPECT_EQ(tree.value("App/Win/a"), "none");
}

TEST(Links, CyclesAreReportedOnceEach) {
    LogCapture log;
    StyleTree tree("L:\n  a: b\n  b: a\n  c: c\n  d: e\n  e: f\n  f: d\n");
    tree.link();
    EXPECT_EQ(log.take(),
              (std::vector<std::string>{"engine: cyclic link `a` on attribute `L/b`.",
                                        "engine: cyclic link `c` on attribute `L/c`.",
                                        "engine: cyclic link `d` on attribute `L/f`."}));
    EXPECT_TRUE(tree.attribute("L/b").cyclic());
    EXPECT_EQ(tree.attribute("L/a").link_target(), &tree.attribute("L/b"));
    EXPECT_EQ(tree.value("L/a"), "none");
}

TEST(Links, AreFoundAgainWhenLinkedTwice) {
    LogCapture log;
    StyleTree tree("L:\n  a: b\n  b: c\n  c: 1\n");
    tree.link();
    tree.attribute("L/c").set_link("a");
    tree.link();
    EXPECT_EQ(log.take(), std::vector<std::string>{"engine: cyclic link `a` on attribute `L/c`."});
    tree.load({"L:\n  b: 2\n"});
    tree.link();
    EXPECT_EQ(tree.value("L/c"), "2");
}

TEST(StateVariants, TheMostNamesWinThenNameOrder) {
    StyleTree tree("x: 0 @Hover: 1 @Hover & Pressed: 2 @B: 3 @A: 4 @A & B & C: 5\n");
    const struct {
        std::vector<std::string> active;
        std::string value;
    } cases[] = {
        {{}, "0"},
        {{"Other"}, "0"},
        {{"Hover"}, "1"},
        {{"Pressed"}, "0"},
        {{"Pressed", "Other", "Hover"}, "2"},
        {{"B", "A"}, "4"},
        {{"A", "Hover", "B"}, "4"},
        {{"Hover", "Pressed", "A"}, "2"},
        {{"C", "B", "A", "Hover", "Pressed"}, "5"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(tree.value("x", c.active), c.value) << testing::PrintToString(c.active);
}

TEST(StateVariants, OfTheTargetCount) {
    const LogCapture log;
    StyleTree tree("a: b\nb: c @S: 1 @T: d\nc: 2 @U: 3\nd: 4 @T: 5\n");
    tree.link();
    EXPECT_EQ(tree.value("a", {"S"}), "1");
    EXPECT_EQ(tree.value("a", {"U"}), "3");
    EXPECT_EQ(tree.value("a", {"U", "S"}), "1");
    // A variant is read without states, so those of its own target do not count.
    EXPECT_EQ(tree.value("a", {"T"}), "4");
    EXPECT_EQ(tree.value("a", {"V"}), "2");
}

TEST(StateVariants, OfTheBaseCountWhereTheAttributeLacksThem) {
    StyleTree tree("B:\n  x: 1 @S: 2 @T: 3\nD << B:\n  x: 4 @T: 5\nE << D\n");
    EXPECT_EQ(tree.value("D/x", {"S"}), "2");
    EXPECT_EQ(tree.value("D/x", {"T"}), "5");
    tree.attribute("B/x")
        .add_child(std::make_unique<LAttribute>("U"))
        ->as_attribute()
        ->set_value(6.0);
    EXPECT_EQ(tree.value("D/x", {"U"}), "6"); // seen although added after a read
    EXPECT_EQ(tree.value("E/x", {"U"}), "6");
}

TEST(ReadingValues, OfAnotherKindGivesNull) {
    StyleTree tree("flag: true\nnumber: 1\ntext: \"t\" @S: 2\n");
    EXPECT_EQ(tree.attribute("flag").number_value({}), nullptr);
    EXPECT_EQ(tree.attribute("flag").string_value({}), nullptr);
    EXPECT_EQ(tree.attribute("number").string_value({}), nullptr);
    EXPECT_EQ(tree.attribute("text").string_value({"S"}), nullptr);
}

} // namespace
} // namespace Layers
