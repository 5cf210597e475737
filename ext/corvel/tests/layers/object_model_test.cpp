#include "layers/layers_support.h"

#include <gtest/gtest.h>

namespace Layers {
namespace {

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

TEST(Attribute, ADependentThatLeavesDuringTheWalkIsSkipped) {
    StyleTree tree("a: c\nb: c\nc: 1\n");
    tree.attribute("a").value_changed().connect([&] { tree.attribute("b").clear_link(false); });
    int changes = 0;
    tree.attribute("b").value_changed().connect([&] { ++changes; });
    tree.attribute("c").set_value(2.0);
    EXPECT_EQ(changes, 0);
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

} // namespace
} // namespace Layers
