#include "screens/theme_sources.h"
#include "support/app_story.h"

#include <chrono>

namespace Corvel {
namespace {

using Names = std::vector<std::string>;
using TestSupport::theme_text;
using TestSupport::write_file;

/// A list of names, each followed by a semicolon.
std::string joined(const Names& names) {
    std::string text;
    for (const std::string& name : names)
        text += name + ";";
    return text;
}

/// An application, from its start on with the directories that an earlier run has stored.
class ThemeSourcesStory : public TestSupport::AppStory {
public:
    ThemeSourcesStory()
        : AppStory("App:\n Cards:\n  Bind: \"ThemeList\"\n  Card << Corvel/Button\n") {
        verbs["theme"] = act([this](auto& what) { // a file, the name and the members of its theme
            std::istringstream words(what);
            std::string file, name, members;
            std::getline(words >> file >> name >> std::ws, members);
            write_file(dir / file, theme_text(name, members));
        });
        verbs["write"] = act([this](auto& file) { write_file(dir / file, "{"); });
        verbs["start"] = act([this](auto& what) { // stored directories
            std::istringstream words(what);
            for (std::string name; words >> name;)
                stored.push_back(name);
            start();
        });
        verbs["environment"] = act([this](auto& name) { environment = name; });
        verbs["add"] = act([this](auto& name) { add(name); });
        verbs["remove"] = act([this](auto& name) { remove(name); });
        verbs["row"] = act([this](auto& what) { // a list and an action
            const std::size_t blank = what.find(' ');
            app->on_any_row_click(what.substr(0, blank), "", what.substr(blank + 1));
        });
        verbs["select"] = [this](auto& name) { return yes(app->set_theme(name)); };
        verbs["active"] = [this](auto&) { return app->active_theme(); };
        verbs["chosen"] = [this](auto&) { return joined(chosen); };
        verbs["stored"] = [this](auto&) { return joined(stored); };
        verbs["writes"] = [this](auto&) { return std::to_string(writes); };
        verbs["themes"] = [this](auto&) { return themes(); };
        verbs["rows"] = [this](auto&) {
            Names labels;
            for (const ListEntry& row : rows)
                labels.push_back(row.id + "=" + row.fields.at("label"));
            return joined(labels);
        };
        verbs["fill"] = [this](auto& path) { return app.node(path).style->fill.text; };
    }

    void start() {
        app->on_rows("themeSources", [this](const std::vector<ListEntry>& now) { rows = now; });
        app->theme_write = [this](const std::string& name) { chosen.push_back(name); };
        ThemeSourceServices services;
        services.read_directories = [this] { return stored; };
        services.write_directories = [this](const Names& names) { stored = names, ++writes; };
        services.choose_directory = [this](const auto& answer) { answer(choice); };
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
    /// The names on the theme cards.
    std::string themes() { return app.children("App/Cards"); }

    Names stored;
    Names chosen;
    int writes = 0;
    std::string environment;
    std::string choice;
    std::vector<ListEntry> rows;
};

[[maybe_unused]] const bool registered = TestSupport::register_stories<ThemeSourcesStory>(
    "ThemeSources", "tests/screens/cases/theme_sources.txt");

TEST(ThemeSources, WorkWithoutServices) {
    TestSupport::TestApp app{"App\n"};
    install_theme_sources(app.app, {});
    app->on_any_row_click("themeSources", "", "add");
    EXPECT_EQ(app->themes().size(), 1u);
}

TEST(ThemeSources, HundredsOfThemesAreAddedSelectedRemovedAndRestored) {
    ThemeSourcesStory run;
    const std::string many = (run.dir / "many").string();
    for (int i = 0; i < 300; ++i) {
        const std::string number = std::to_string(1000 + i);
        const std::string file = many + "/" + number.substr(0, 3) + "/" + number + ".json";
        write_file(file, i % 50 == 7
                             ? "{\"T\": "
                             : theme_text("T" + number, R"("Primary": "#)" + number + "\""));
    }
    run.start();
    const auto start = std::chrono::steady_clock::now();
    run.add(many);
    const auto spent = std::chrono::steady_clock::now() - start;
    EXPECT_LT(spent, std::chrono::seconds(3)); // 300 ms are wanted; the rest is for sanitizers
    RecordProperty("milliseconds",
                   std::chrono::duration_cast<std::chrono::milliseconds>(spent).count());

    EXPECT_EQ(run.app.node("App/Cards").children.size(), 295u);
    EXPECT_FALSE(run.app.shows("App/Cards/T1057"));
    run.app->render_patches();
    run.app->dispatch_event("App/Cards/T1299", "click");
    EXPECT_EQ(run.app->active_theme(), "T1299");
    EXPECT_EQ(run.app.node("App/Cards/T1299").style->fill.text, "#1299");
    EXPECT_EQ(run.app.node("App/Cards/T1123").style->fill.text, "#1123");

    ThemeSourcesStory next;
    next.stored = run.stored;
    next.start();
    EXPECT_EQ(next.themes(), run.themes());
    EXPECT_TRUE(next.app->set_theme("T1299"));
    run.remove(many);
    EXPECT_EQ(run.themes(), "Plain;");
    EXPECT_EQ(run.app->active_theme(), "Plain");
    EXPECT_EQ(run.stored, Names{});
}

} // namespace
} // namespace Corvel
