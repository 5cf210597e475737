// What hostile styles cost: twice the text may take two and a half times the memory, or a limit is
// told with file and line. Memory given back counts, so that work that allocates counts too.

#include "layers/layers_support.h"
#include "layers/style_reader.h"
#include "support/allocation_count.h"

#include <gtest/gtest.h>

#include <functional>
#include <sstream>

namespace Layers {
namespace {

struct Repeat {
    const char* left;
    const char* middle = "";
    const char* right = "";
};

/// `count` times left, number, middle, number, right; the second number is `step` behind.
std::string lines(int count, Repeat repeat, int step = 0) {
    std::ostringstream text;
    for (int i = 1; i <= count; ++i) {
        text << repeat.left << i << repeat.middle;
        if (*repeat.right != '\0')
            text << i - step << repeat.right;
    }
    return text.str();
}

void read_all(const LLayer& root, const std::vector<std::string>& states) {
    std::vector<const LLayer*> pending{&root};
    std::vector<StyleReader> kept;
    while (!pending.empty()) {
        const LLayer* const layer = pending.back();
        pending.pop_back();
        kept.emplace_back(layer).read(states);
        for (const std::unique_ptr<LObject>& child : layer->children())
            if (const LLayer* const inner = child->as_layer())
                pending.push_back(inner);
    }
}

constexpr LimitSizes small{10'000, 1'000, 20'000};

struct Cost {
    std::size_t bytes = 0;
    std::string log;
};

Cost cost_of(const std::string& text) {
    LogCapture log;
    Cost cost;
    cost.bytes = TestSupport::bytes_taken_by([&text] {
        StyleTree tree;
        tree.limits = LoadLimits(small);
        tree.load(text);
        tree.link();
        read_all(tree.root, {"Hover", "s1"});
    });
    cost.log = log.take();
    return cost;
}

struct Case {
    const char* name;
    int size;
    std::function<std::string(int)> text;
    const char* told = ""; ///< how the message of the double begins
};

const Case cases[] = {
    {"layers that double by inheritance", 30,
     [](int n) {
         return "L0:\n" + lines(20, {"  a", ": ", "\n"}) +
                lines(n, {"L", ":\n  (a, b) << L", "\n"}, 1);
     },
     "engine: a:39: Left out what is inherited"},
    {"attributes of a base, and heirs", 300,
     [](int n) {
         return "B:\n" + lines(n, {"  a", ": 1\n"}) + lines(n, {"H", " << B\n"});
     },
     "engine: a:656: Left out what is inherited"},
    {"expansions of a long text", 100,
     [](int n) {
         return "(" + lines(n, {"a", ", "}) + "z): \"" + std::string(1000U * n, 'x') + "\"\n(" +
                lines(n, {"L", ", "}) + "Z):\n  Caption: \"" + std::string(1000U * n, 'x') + "\"\n";
     }},
    {"links read from many layers", 500,
     [](int n) {
         return "a0: 1 @s0: 2\n" + lines(n, {"a", " : a", " @Down: 2\n"}, 1) +
                lines(n, {"L", ":\n  Size.Width: a", "\n"});
     }},
    {"links of a deep layer that lead nowhere", 2000,
     [](int n) {
         std::string path;
         for (int i = 0; i < n; ++i)
             path += "A/";
         return path + "A:\n" + lines(n / 5, {"  a", ": miss", "\n"});
     },
     "engine: unresolved link `miss1`"},
    {"states of one attribute, and heirs", 200,
     [](int n) {
         return "B:\n  Opacity: 1\n" + lines(n, {"    @s", ": 1\n"}) + lines(40, {"H", " << B\n"}) +
                lines(40, {"G", " << B:\n  Opacity: 2\n"});
     }},
    {"names that multiply", 6,
     [](int n) {
         std::string name;
         for (int i = 0; i < n; ++i)
             name += "(a, b, c, d, e, f, g, h) ";
         return "good: 1\n" + name + ": 1\nlast.(a, b): 2\n";
     },
     "engine: a:2: Left out a declaration; the expansions of its name stand for too much."},
    {"bodies that multiply", 5,
     [](int n) {
         std::string text;
         for (int i = 0; i < n; ++i)
             text += std::string(i, ' ') + "(a, b, c, d, e, f, g, h, i, j):\n";
         return text + std::string(n, ' ') + "x: 1\n";
     },
     "engine: a:"},
};

TEST(Growth, OfMemoryIsThatOfTheTextOrALimitIsTold) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const Cost once = cost_of(c.text(c.size));
        const Cost twice = cost_of(c.text(2 * c.size));
        EXPECT_LE(twice.bytes, once.bytes / 2 * 5 + 100'000);
        EXPECT_LE(twice.bytes, 60'000'000U);
        EXPECT_LE(twice.log.size(), 1'100'000U);
        EXPECT_EQ(twice.log.substr(0, std::string(c.told).size()), c.told);
    }
}

// What one file has too much of is not missing in another, nor in the rest of its own.
TEST(Growth, ALimitCostsOthersNothing) {
    LogCapture log;
    StyleTree tree;
    tree.limits = LoadLimits(small);
    tree.load("Good/A:\n  x: 1\nGood/B << Good/A\nD0:\n  (a, b): 1\n" +
              lines(40, {"D", ":\n  (a, b) << D", "\n"}, 1) + "Far << Good/A\n---\n" +
              "Other << Good/A:\n  (y, z): 2\n");
    tree.link();
    EXPECT_EQ(log.take(),
              "engine: a:27: Left out what is inherited from here on; the layers of this "
              "file inherit too much.\n");
    EXPECT_EQ(tree.value("Good/B/x"), "1");
    EXPECT_EQ(tree.value("Other/x"), "1");
    EXPECT_EQ(tree.value("Other/z"), "2");
    EXPECT_EQ(tree.layer("Far").base(), &tree.layer("Good/A"));
}

} // namespace
} // namespace Layers
