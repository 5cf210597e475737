#include "runtime/app_fixture.h"
#include "runtime/settings/theme_sources.h"

#include <gtest/gtest.h>

namespace Corvel {
namespace {

using Names = std::vector<std::string>;
using TestSupport::theme_text;
using TestSupport::write_file;

class ThemeSourcesTest : public testing::Test {
protected:
    ThemeSourcesTest() {
        write_file(folder / "one/a.json", theme_text("A", ""));
        write_file(folder / "one/deep/er/b.json", theme_text("B", ""));
        write_file(folder / "one/broken.json", "{");
        write_file(folder / "one/c.JSON", theme_text("C", ""));
        write_file(folder / "two/d.json", theme_text("D", ""));
        app->on_rows("themeSources", [this](const std::vector<ListEntry>& now) { rows = now; });
    }

    std::string path(const std::string& name) { return (folder / name).string(); }

    void install(const Names& stored = {}, const std::string& environment = "") {
        ThemeSourceServices services;
        services.read_directories = [stored] { return stored; };
        services.write_directories = [this](const Names& directories) {
            written.push_back(directories);
        };
        services.choose_directory = [this](std::function<void(const std::string&)> answer) {
            answer(choice);
        };
        services.environment_directory = environment;
        install_theme_sources(app.app, std::move(services));
    }

    void add(const std::string& directory) {
        choice = directory;
        app->on_any_row_click("themeSources", "", "add");
    }

    void remove(const std::string& directory) {
        app->on_any_row_click("themeSources", "dir:" + directory, "remove");
    }

    Names themes() {
        Names names;
        for (const auto& [name, theme] : app->themes())
            names.push_back(name);
        return names;
    }

    Names labels() {
        Names texts;
        for (const ListEntry& row : rows)
            texts.push_back(row.fields.at("label"));
        return texts;
    }

    TestSupport::TempDir folder;
    TestSupport::TestApp app{"App\n"};
    std::string choice;
    std::vector<Names> written;
    std::vector<ListEntry> rows;
};

TEST_F(ThemeSourcesTest, RestoresStoredDirectoriesWithAllBelow) {
    install({path("one"), path("missing")});
    EXPECT_EQ(themes(), (Names{"A", "B", "Plain"}));
    EXPECT_EQ(labels(), (Names{"missing", "one"}));
    EXPECT_EQ(rows.at(1).id, "dir:" + path("one"));
    EXPECT_EQ(written.back(), (Names{path("missing"), path("one")}));
}

TEST_F(ThemeSourcesTest, ShowsTheEnvironmentsDirectoryButNeverStoresIt) {
    install({path("one")}, path("two"));
    EXPECT_EQ(labels(), (Names{"one", "two"}));
    EXPECT_EQ(themes(), (Names{"A", "B", "D", "Plain"}));
    add(path("missing"));
    EXPECT_EQ(written.back(), (Names{path("missing"), path("one")}));
    remove(path("two"));
    EXPECT_EQ(themes(), (Names{"A", "B", "Plain"}));
    EXPECT_EQ(labels(), (Names{"missing", "one"}));
}

TEST_F(ThemeSourcesTest, ADirectoryIsAddedOnceAndACancelledChoiceNever) {
    install();
    EXPECT_TRUE(rows.empty());
    add("");
    EXPECT_TRUE(written.empty());
    add(path("two"));
    add(path("two"));
    EXPECT_EQ(written, (std::vector<Names>{{path("two")}}));
    EXPECT_EQ(themes(), (Names{"D", "Plain"}));
    add(path("two") + "/"); // another spelling is another source
    EXPECT_EQ(labels(), (Names{"two", path("two") + "/"}));
}

TEST_F(ThemeSourcesTest, RemovingTheActiveThemesDirectoryMovesOn) {
    install({path("one")});
    Names chosen;
    app->theme_write = [&](const std::string& name) { chosen.push_back(name); };
    ASSERT_TRUE(app->set_theme("B"));
    remove(path("one"));
    EXPECT_EQ(app->active_theme(), "Plain");
    EXPECT_EQ(chosen, (Names{"B", "Plain"}));
    EXPECT_EQ(written.back(), Names{});
    EXPECT_TRUE(rows.empty());
}

TEST_F(ThemeSourcesTest, AReloadOfTheActiveThemeTakesEffectAtOnce) {
    write_file(folder / "three/p.json", theme_text("Plain", R"("Primary": "#123456")"));
    install();
    add(path("three"));
    EXPECT_EQ(theme_value(app->themes().at("Plain"), "Primary"), "#123456");
    EXPECT_EQ(theme_value(app->themes().at(app->active_theme()), "Primary"), "#123456");
    remove(path("three")); // the last theme stays
    EXPECT_EQ(themes(), Names{"Plain"});
}

TEST_F(ThemeSourcesTest, OtherClicksMeanNothing) {
    install({path("one")});
    const std::size_t writes = written.size();
    choice = path("two");
    app->on_any_row_click("otherList", "", "add");
    app->on_any_row_click("themeSources", "", "open");
    app->on_any_row_click("themeSources", "dir:/unknown", "remove");
    EXPECT_EQ(written.size(), writes);
    EXPECT_EQ(labels(), Names{"one"});
}

TEST_F(ThemeSourcesTest, WorksWithoutServices) {
    install_theme_sources(app.app, {});
    add(path("one"));
    EXPECT_EQ(themes(), Names{"Plain"});
}

} // namespace
} // namespace Corvel
