#include "layers/engine.h"
#include "layers/log.h"
#include "runtime/app_fixture.h"

#include <gtest/gtest.h>

namespace Corvel {
namespace {

using TestSupport::TestApp;
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

/// The attributes of the layer "Theme", each as its text.
std::string theme_attributes(CorvelApp& app) {
    std::string text;
    for (const auto& entry : default_theme()) {
        const Layers::AttributeValue& value =
            app.engine().find_layer("Theme")->find_attribute(entry.first)->value();
        if (const auto* string = std::get_if<std::string>(&value))
            text += *string;
        else if (const auto* number = std::get_if<double>(&value))
            text += std::to_string(static_cast<int>(*number));
        text += ' ';
    }
    return text;
}

TEST(ThemeSwitch, KeysThatAThemeLacksGetTheirDefaults) {
    TestApp app("App\n", {theme_text("A", R"("Primary": "#aaa", "Gradient": ["0.25:#1", "3:#2"])"),
                          theme_text("B", R"("Foreground": 5, "Tertiary": [1])")});
    EXPECT_EQ(theme_attributes(app.app), "#e3e3e3 0 #1 3 #2 #aaa #2f3136 #25272b ");
    EXPECT_TRUE(app->set_theme("B"));
    EXPECT_EQ(theme_attributes(app.app), "5 0 #3a3c42 1 #42454d #36393f #2f3136  ");
}

TEST(ThemeSwitch, OnlyRealChangesAreWritten) {
    TestApp app("App:\n Fill: Theme/Primary\n",
                {theme_text("A", "\"Primary\": \"#a\""), theme_text("B", "\"Primary\": \"#b\""),
                 theme_text("C", "")});
    std::string log;
    app->theme_write = [&](const std::string& name) { log += name + ";"; };
    EXPECT_TRUE(app->set_theme("A")); // in force since the load
    EXPECT_FALSE(app->set_theme("None"));
    EXPECT_FALSE(app->remove_theme("None"));
    EXPECT_TRUE(app->remove_theme("C"));
    EXPECT_EQ(log, "");
    EXPECT_TRUE(app->remove_theme(app->active_theme())); // moves on to the next
    EXPECT_EQ(app->active_theme(), "B");
    EXPECT_EQ(app.node("App").style->fill.text, "#b");
    EXPECT_EQ(log, "B;");
    EXPECT_FALSE(app->remove_theme("B")); // the last one stays
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
