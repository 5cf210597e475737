#include "layers/engine.h"
#include "layers/log.h"
#include "runtime/app_fixture.h"

#include <gtest/gtest.h>

namespace Corvel {
namespace {

using TestSupport::theme_text;
using TestSupport::write_file;

class Assets : public testing::Test {
protected:
    Assets()
        : earlier_(Layers::set_log_sink([this](const std::string& line) { log_ += line; })) {}
    ~Assets() override { Layers::set_log_sink(earlier_); }

    bool load(const std::string& theme_name, const std::vector<std::string>& folders = {}) {
        app_.set_root("App");
        return app_.load_assets((dir_ / "themes").string(), (dir_ / "styles").string(), theme_name,
                                folders);
    }

    TestSupport::TempDir dir_;
    std::string log_;
    CorvelApp app_;

private:
    Layers::LogSink earlier_;
};

TEST_F(Assets, MissingFoldersAreLoggedAndOnlyThemesDecide) {
    EXPECT_FALSE(load("Any"));
    EXPECT_NE(log_.find("widgets"), std::string::npos);
    EXPECT_NE(log_.find("mounts"), std::string::npos);
    const auto first = app_.render_patches();
    ASSERT_EQ(first.size(), 1u);
    EXPECT_EQ(first[0].path, "");
    EXPECT_TRUE(app_.render_patches().empty());
    write_file(dir_ / "themes/broken.json", "[]");
    EXPECT_FALSE(load(""));
    EXPECT_EQ(app_.active_theme(), "");
}

TEST_F(Assets, ThemesAreTheReadableJsonFilesOfTheFolder) {
    write_file(dir_ / "themes/good.json", theme_text("b", ""));
    write_file(dir_ / "themes/better.json", theme_text("a", ""));
    write_file(dir_ / "themes/upper.json", theme_text("C", ""));
    write_file(dir_ / "themes/.json", theme_text("No extension", ""));
    write_file(dir_ / "themes/capitals.JSON", theme_text("Capitals", ""));
    write_file(dir_ / "themes/text.txt", theme_text("Text", ""));
    write_file(dir_ / "themes/broken.json", "{");
    write_file(dir_ / "themes/folder.json/deep.json", theme_text("Deep", ""));
    EXPECT_TRUE(load("b"));
    EXPECT_EQ(app_.active_theme(), "b");
    EXPECT_EQ(app_.themes().size(), 3u);
    EXPECT_TRUE(load("missing"));
    EXPECT_EQ(app_.active_theme(), "C"); // the lowest
}

TEST_F(Assets, ListsOfThemesInEachOtherAreBoundedAndTold) {
    std::string style = "App:\n";
    for (std::size_t depth = 1; depth <= 13; ++depth) {
        const std::string indent(depth, ' ');
        style += indent + "L << Corvel/Kind:\n" + indent + " Bind: \"ThemeList\"\n";
    }
    write_file(dir_ / "styles/widgets/w.lyr", "Kind:\n Size.Width: 1\n");
    write_file(dir_ / "app/a.lyr", style);
    for (const char* name : {"a", "b", "c"})
        write_file(dir_ / "themes" / (std::string(name) + ".json"), theme_text(name, ""));
    EXPECT_TRUE(load("a", {(dir_ / "app").string()}));
    log_.clear();
    const std::function<std::size_t(const RenderNode&)> count = [&](const RenderNode& node) {
        std::size_t nodes = 1;
        for (const RenderNode& child : node.children)
            nodes += count(child);
        return nodes;
    };
    EXPECT_EQ(count(app_.build_render_tree()), 1u + 1 + 3 + 9);
    EXPECT_TRUE(
        log_.ends_with("a.lyr:6: Left out theme cards; lists of themes lie too deep in each "
                       "other."))
        << log_;
    log_.clear();
    app_.build_render_tree();
    EXPECT_EQ(log_, "") << "once";
}

TEST_F(Assets, ApplicationBeatsMountsAndLinksReachEverywhere) {
    write_file(dir_ / "styles/widgets/w.lyr", "Kind:\n Text: App/Word\n Size.Width: 1\n");
    write_file(dir_ / "styles/mounts/m.lyr", "Shared:\n Size.Width: 2\n Size.Height: 2\n");
    write_file(dir_ / "first/a.lyr",
               "Shared:\n Size.Width: 3\nApp << Shared:\n N << Corvel/Kind\n");
    write_file(dir_ / "second/a.lyr", "App:\n Word: \"linked\"\n");
    write_file(dir_ / "themes/t.json", theme_text("T", ""));
    EXPECT_TRUE(load("T", {(dir_ / "first").string(), (dir_ / "second").string()}));
    const RenderNode tree = app_.build_render_tree();
    EXPECT_EQ(tree.style->width, 3);
    EXPECT_EQ(tree.style->height, 2);
    ASSERT_EQ(tree.children.size(), 1u);
    EXPECT_EQ(tree.children[0].text, "linked");
    EXPECT_EQ(tree.children[0].style->width, 1);
}

TEST(ThemeSwitch, NeedsNoLayerForThemes) {
    CorvelApp app;
    EXPECT_EQ(app.add_theme_text("{"), "");
    EXPECT_EQ(app.add_theme_text(theme_text("T", "")), "T");
    EXPECT_TRUE(app.set_theme("T"));
    EXPECT_EQ(app.active_theme(), "T");
}

} // namespace
} // namespace Corvel
