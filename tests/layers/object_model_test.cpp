#include "layers/layers_support.h"
#include "layers/linker.h"

#include <gtest/gtest.h>

namespace Layers {
namespace {

struct Counter {
    explicit Counter(Signal& signal) {
        signal.connect([this] { ++count; });
    }
    int count = 0;
};

TEST(Signals, CallbacksMayRemoveThemselvesAndOthers) {
    Signal signal;
    std::string calls;
    Signal::Key second = 0;
    Signal::Key first = 0;
    first = signal.connect([&] {
        calls += "1";
        signal.disconnect(first);
        signal.disconnect(second);
        signal.connect([&] { calls += "new"; });
    });
    second = signal.connect([&] { calls += "2"; });
    signal.connect([&] { calls += "3"; });
    signal.emit();
    EXPECT_EQ(calls, "13");
    signal.emit();
    EXPECT_EQ(calls, "133new");
}

TEST(Attribute, ChangesReachLinkedAttributesAndEqualValuesNobody) {
    StyleTree tree("a: b\nb: c\nc: 1\nd: c\n");
    Counter a(tree.attribute("a").value_changed());
    Counter d(tree.attribute("d").value_changed());
    const std::uint64_t revision = style_revision();
    tree.attribute("c").set_value(1.0);
    EXPECT_EQ(a.count, 0);
    EXPECT_EQ(style_revision(), revision);
    tree.attribute("c").set_value(2.0);
    EXPECT_EQ(a.count, 1);
    EXPECT_EQ(d.count, 1);
    EXPECT_EQ(tree.value("a"), "2");
    EXPECT_NE(style_revision(), revision);
}

TEST(Attribute, AValueCutsTheLinkAndALinkClearsTheValue) {
    StyleTree tree("a: b\nb: 1\n");
    LAttribute& a = tree.attribute("a");
    Counter links(a.link_changed());
    a.set_value(5.0);
    EXPECT_FALSE(a.has_link());
    tree.attribute("b").set_value(2.0);
    EXPECT_EQ(tree.value("a"), "5");
    EXPECT_FALSE(a.set_link(""));
    EXPECT_TRUE(a.set_link("b"));
    EXPECT_EQ(tree.value("a"), "none"); // until it is resolved
    EXPECT_EQ(links.count, 2);
}

TEST(Attribute, AClearedLinkKeepsWhatItShowed) {
    StyleTree tree("a: b\nb: c\nc: 7\n");
    tree.attribute("a").clear_link(false);
    tree.attribute("c").set_value(8.0);
    EXPECT_EQ(tree.value("a"), "7");
}

TEST(Attribute, LinksMayBeResolvedAgain) {
    LogCapture log;
    StyleTree tree("L:\n  a: b\n  b: c\n  c: 1\n");
    tree.attribute("L/c").set_link("a");
    tree.link();
    EXPECT_EQ(log.take(), "engine: cyclic link `a` on attribute `L/c`.\n");
    EXPECT_TRUE(tree.attribute("L/c").cyclic());
    tree.load("L:\n  b: 2\n");
    tree.link();
    EXPECT_EQ(tree.value("L/c"), "2");
}

TEST(Attribute, ADependentThatLeavesDuringTheWalkIsSkipped) {
    StyleTree tree("a: c\nb: c\nc: 1\n");
    tree.attribute("a").value_changed().connect([&] { tree.attribute("b").clear_link(false); });
    Counter b(tree.attribute("b").value_changed());
    tree.attribute("c").set_value(2.0);
    EXPECT_EQ(b.count, 0);
}

TEST(Attribute, MayBeDestroyedByItsOwnNotification) {
    auto owner = std::make_unique<LLayer>("");
    auto* source = owner->add_child(std::make_unique<LAttribute>("s"))->as_attribute();
    source->value_changed().connect([&] { owner.reset(); });
    source->set_value(1.0);
    EXPECT_EQ(owner, nullptr);
}

TEST(Attribute, ADestroyedTargetLeavesItsValue) {
    std::string left;
    {
        StyleTree tree("a: t\nt: 3\n"); // destroyed from the last child on
        LAttribute& a = tree.attribute("a");
        tree.attribute("t").destroyed().connect([&] { left = show(a.value()); });
    }
    EXPECT_EQ(left, "3");
}

TEST(Attribute, AVariantAddedToTheBaseIsSeen) {
    StyleTree tree("B:\n  x: 1\nD << B:\n  x: 4 @T: 5\nE << D\n");
    EXPECT_EQ(tree.value("E/x", {"U"}), "4");
    LObject* variant = tree.attribute("B/x").add_child(std::make_unique<LAttribute>("U"));
    variant->as_attribute()->set_value(6.0);
    EXPECT_EQ(tree.value("D/x", {"U"}), "6");
    EXPECT_EQ(tree.value("E/x", {"U"}), "6");
}

TEST(Layer, FindsByExactNamesInLargeLayersToo) {
    LLayer layer("");
    for (int i = 0; i < 1000; ++i) {
        const std::string name = "n" + std::to_string(i);
        layer.add_child(std::make_unique<LAttribute>(name));
        LObject* child = layer.add_child(std::make_unique<LLayer>(name));
        child->as_layer()->add_child(std::make_unique<LLayer>("in"));
    }
    for (int i = 0; i < 1000; i += 37) {
        const std::string name = "n" + std::to_string(i);
        ASSERT_NE(layer.find_attribute(name), nullptr);
        ASSERT_EQ(layer.find_attribute(name)->name(), name);
        ASSERT_EQ(layer.find_layer(name + "/in")->parent()->name(), name);
    }
    for (const char* missing : {"", "n", "n1000", "n1/", "/n1", "n1//in", "n1/in/in"})
        EXPECT_EQ(layer.find_layer(missing), nullptr) << missing;
    layer.find_attribute("n5")->set_name("new");
    EXPECT_EQ(layer.find_attribute("n5"), nullptr);
    EXPECT_NE(layer.find_attribute("new"), nullptr);
}

TEST(Layer, ALinkedLayerIsNotLinkedAgain) {
    StyleTree tree("B:\n  x: 1\nD << B\n");
    tree.load("B:\n  y: 2\nD:\n  N << B\nE << D\n");
    EXPECT_EQ(show(tree.layer("D")), "x = 1\nN << B:\n");
    EXPECT_EQ(show(tree.layer("E")), "x = 1\nN << B:\n");
}

} // namespace
} // namespace Layers
