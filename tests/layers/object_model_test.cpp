#include "layers/layers_support.h"
#include "layers/object_model.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

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

TEST(Attribute, AnEqualValueTellsNobody) {
    LAttribute attribute("x");
    Counter changes(attribute.value_changed());
    attribute.set_value(AttributeValue{});
    attribute.set_value(1.0);
    attribute.set_value(1.0);
    attribute.set_value(true);
    attribute.set_value(std::string("t"));
    attribute.set_value(std::string("t"));
    EXPECT_EQ(changes.count, 3);
    attribute.set_value(std::numeric_limits<double>::quiet_NaN());
    attribute.set_value(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(changes.count, 5); // no number that equals itself
}

TEST(Attribute, ChangesReachLinkedAttributes) {
    StyleTree tree("a: b\nb: c\nc: 1\nd: c\n");
    tree.link();
    Counter a(tree.attribute("a").value_changed());
    Counter d(tree.attribute("d").value_changed());
    const std::uint64_t revision = style_revision();
    tree.attribute("c").set_value(2.0);
    EXPECT_EQ(a.count, 1);
    EXPECT_EQ(d.count, 1);
    EXPECT_EQ(tree.value("a"), "2");
    EXPECT_NE(style_revision(), revision);
}

TEST(Attribute, AValueCutsTheLinkAndALinkClearsTheValue) {
    StyleTree tree("a: b\nb: 1\n");
    tree.link();
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
    tree.link();
    Counter changes(tree.attribute("a").value_changed());
    tree.attribute("a").clear_link(false);
    EXPECT_EQ(tree.value("a"), "7");
    EXPECT_EQ(changes.count, 0);
    tree.attribute("a").clear_link(true);
    EXPECT_EQ(changes.count, 0); // there was none any more
}

TEST(Attribute, ADependentThatLeavesDuringTheWalkIsSkipped) {
    StyleTree tree("a: c\nb: c\nc: 1\n");
    tree.link();
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
        tree.link();
        LAttribute& a = tree.attribute("a");
        tree.attribute("t").destroyed().connect([&] { left = show(a.value()); });
    }
    EXPECT_EQ(left, "3");
}

TEST(Layer, FindsByExactNamesInLargeLayersToo) {
    LLayer layer("");
    for (int i = 0; i < 1000; ++i) {
        const std::string name = "n" + std::to_string(i);
        layer.add_child(std::make_unique<LAttribute>(name));
        layer.add_child(std::make_unique<LLayer>(name))
            ->as_layer()
            ->add_child(std::make_unique<LLayer>("in"));
        ASSERT_EQ(layer.version(), 2u * static_cast<unsigned>(i) + 2);
    }
    for (int i = 0; i < 1000; i += 37) {
        const std::string name = "n" + std::to_string(i);
        ASSERT_NE(layer.find_attribute(name), nullptr);
        ASSERT_EQ(layer.find_attribute(name)->name(), name);
        ASSERT_EQ(layer.find_layer(name + "/in")->parent()->name(), name);
    }
    for (const char* missing : {"", "n", "n1000", "n1/", "/n1", "n1//in", "n1/in/in"})
        EXPECT_EQ(layer.find_layer(missing), nullptr) << missing;
}

TEST(Layer, RenamedChildrenAreFoundByTheirNewName) {
    LLayer layer("");
    LObject* child = layer.add_child(std::make_unique<LAttribute>("old"));
    layer.find_attribute("old");
    child->set_name("new");
    EXPECT_EQ(layer.find_attribute("old"), nullptr);
    EXPECT_EQ(layer.find_attribute("new"), child);
}

} // namespace
} // namespace Layers
