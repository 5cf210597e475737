#include "app_window.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QPoint>
#include <QWidget>

#include <functional>

namespace TestSupport {
namespace {

struct RealWindow : testing::Test {
    AppWindow ui;

    std::filesystem::path site(const std::string& name, const std::string& text) {
        write_file(ui.dir / (name + "/.lumenfold-site"), text);
        return ui.dir / (name + "/.lumenfold-site");
    }
};

TEST_F(RealWindow, ABadPathAtTheStartOpensAModalWindow) {
    ui.start({ui.dir / "nothing"});
    QWidget* dialog = ui.widget("Message Dialog");
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->window() != ui.window.get());
    EXPECT_TRUE(dialog->window()->isVisible());
    EXPECT_TRUE(dialog->window()->isModal());
    EXPECT_EQ(ui.widget("Confirm Dialog"), nullptr);
    ui.click("Message Dialog/Body/OK Button");
    EXPECT_EQ(ui.widget("Message Dialog"), nullptr);
}

TEST_F(RealWindow, WhatWasTypedForOneSiteNeverShowsInTheNext) {
    const auto a = site("a", R"({"output": "./output"})");
    const auto b = site("b", R"({"output": "./output"})");
    ui.start({b, a});
    ui.type("Output Field", "./mine");
    ui.type("Logo Height Field", "x9"); // refused, and so in no file
    ui.row_action("config-1", "activate");
    EXPECT_EQ(ui.editor_text("Output Field"), "./output");
    EXPECT_EQ(ui.editor_text("Logo Height Field"), "");
    ui.advance(1000);
    EXPECT_EQ(read_file(b), R"({"output": "./output"})");
    EXPECT_EQ(read_file(a), "{\n  \"output\": \"./mine\"\n}\n");
}

TEST_F(RealWindow, AnEmptiedFieldIsNotRestoredIntoTheNextConfiguration) {
    const auto a = site("a", R"({"title": "A"})");
    write_file(ui.dir / "p/.lumenfold-project", R"({"slug": "p"})");
    ui.start({ui.dir / "p/.lumenfold-project", a});
    ui.type("Site Form/Title Field", "");
    ui.row_action("config-1", "activate");
    ui.advance(1000);
    EXPECT_EQ(read_file(ui.dir / "p/.lumenfold-project"), R"({"slug": "p"})");
    EXPECT_EQ(read_file(a), "{\n  \"title\": \"\"\n}\n");
}

TEST_F(RealWindow, ARefusedChoiceAndADiscardReachTheWidgetsThatStayUp) {
    const auto file = site("a", R"({"policies": [{"name": "A"}, {"name": "B", "file": "b.md"},
                                   {"name": "C", "file": "c.md"}]})");
    write_file(ui.dir / "a/b.md", "same");
    write_file(ui.dir / "a/c.md", "same");
    ui.start({file});
    ui.click("Sidebar/Policies Tab");
    ui.choose("Item Combo", 1);
    ui.type("File Editor", "typed");
    ui.choose("Item Combo", 2);
    EXPECT_EQ(ui.combo("Item Combo")->currentIndex(), 1) << "the box shows what the form shows";
    ui.cancel();
    EXPECT_EQ(ui.editor_text("File Editor"), "typed");
    ui.choose("Item Combo", 2);
    ui.confirm();
    EXPECT_EQ(ui.combo("Item Combo")->currentIndex(), 2);
    EXPECT_EQ(ui.editor_text("File Editor"), "same");

    ui.click("Text View Tab");
    ui.type("Text Panel/Text Editor", "{");
    ui.click("Editor View Tab");
    ui.confirm();
    ui.click("Text View Tab");
    EXPECT_EQ(ui.editor_text("Text Panel/Text Editor"), read_file(file));
}

TEST_F(RealWindow, ASectionMovedDownStandsLowerOnScreen) {
    ui.start({site("a", R"({"home": {"sections": [{"type": "custom", "label": "one"},
                            {"type": "socials"}, {"type": "projects"}]}})")});
    ui.row_action("home-0", "down");
    const auto top = [&](const std::string& row) {
        return ui.widget(row)->mapTo(ui.window.get(), QPoint()).y();
    };
    EXPECT_LT(top("home-0"), top("home-1"));
    EXPECT_LT(top("home-1"), top("home-2"));
    EXPECT_EQ(ui.widget("home-0/Edit Button"), nullptr);
    EXPECT_NE(ui.widget("home-1/Edit Button"), nullptr);
}

TEST_F(RealWindow, TheDerivedFieldsOfANewPolicyFollowAgainWhenEmptied) {
    ui.start({site("a", "{}")});
    ui.click("Sidebar/Policies Tab");
    ui.click("Selector Row/Add Button");
    ui.type("Body/Name Editor", "One");
    ui.type("File Row/File Editor", "");
    ui.type("Body/Name Editor", "Two"); // leaving the emptied field restores nothing
    EXPECT_EQ(ui.editor_text("Body/Slug Editor"), "two");
    EXPECT_EQ(ui.editor_text("File Row/File Editor"), "policies/two.md");
}

/// What can be unsaved in a configuration.
struct Subject {
    const char* field; ///< of the form
    const char* tab;   ///< with the file editor
    const char* file_editor;
    const char* guard;
    const char* config;   ///< its file
    const char* document; ///< the file editor's file
};
constexpr Subject SITE = {"Site Form/Title Field", "Sidebar/Policies Tab", "File Editor",
                          "Policies editor",       "a/.lumenfold-site",    "a/p.md"};
constexpr Subject MEMBER = {"Tagline Field", "Sidebar/Readme Tab",     "Readme Editor",
                            "README editor", "a/q/.lumenfold-project", "a/q/README.md"};

/// A way out of the configuration that is up, and what it does with what is unsaved.
struct WayOut {
    const char* name;
    Subject subject;
    std::function<void(AppWindow&)> leave;
    std::string asks; ///< the end of its question; empty if it asks nothing
    bool from_text_view = true;
    bool flushes = true;
};

std::vector<WayOut> ways_out() {
    const std::string leaving = " has unsaved changes. Leaving this configuration will discard "
                                "them.";
    const auto card = [](AppWindow& ui) {
        ui.click("Sidebar/Projects Tab");
        ui.row_action("proj-0", "activate");
    };
    return {
        {"another tab", SITE, [](AppWindow& ui) { ui.row_action("config-1", "activate"); },
         leaving},
        {"open", SITE, [](AppWindow& ui) { ui.open(ui.dir / "b/.lumenfold-site"); }, leaving},
        {"card", SITE, card, leaving, false},
        {"member", MEMBER, [](AppWindow& ui) { ui.row_action("member-0", "activate"); }, leaving},
        {"close", SITE, [](AppWindow& ui) { ui.row_action("config-2", "close"); }, ""},
        {"text view", SITE, [](AppWindow& ui) { ui.click("Text View Tab"); },
         " has unsaved changes. Switching views will discard them.", false},
        {"quit", SITE, [](AppWindow& ui) { ui.window.reset(); }, "", true, false},
    };
}

/// A window in which the subject of a way out is up.
std::unique_ptr<AppWindow> open_subject(const WayOut& way) {
    auto ui = std::make_unique<AppWindow>();
    write_file(ui->dir / "b/.lumenfold-site", "{}");
    write_file(ui->dir / "a/.lumenfold-site",
               R"({"policies": [{"file": "p.md"}], "projects": [
                   {"config": "lead/.lumenfold-project"}, {"config": "q/.lumenfold-project"}]})");
    write_file(ui->dir / "a/p.md", "old");
    write_file(ui->dir / "a/lead/.lumenfold-project", R"({"slug": "f", "name": "F"})");
    write_file(ui->dir / "a/q/.lumenfold-project", R"({"slug": "q", "parent_slug": "f"})");
    write_file(ui->dir / "a/q/.lumenfold", R"({"build": {"readme": "README.md"}})");
    write_file(ui->dir / "a/q/README.md", "old");
    ui->start({ui->dir / "b/.lumenfold-site", ui->dir / "a/.lumenfold-site"});
    if (way.subject.field == MEMBER.field) {
        ui->click("Sidebar/Projects Tab");
        ui->row_action("proj-0", "activate");
        ui->row_action("member-1", "activate");
    }
    return ui;
}

TEST(WaysOut, DoWithWhatIsUnsavedAsAgreed) {
    for (const WayOut& way : ways_out()) {
        SCOPED_TRACE(way.name);
        const Subject& subject = way.subject;
        auto ui = open_subject(way);
        const std::string before = read_file(ui->dir / subject.config);
        ui->type(subject.field, "typed");
        way.leave(*ui);
        ASSERT_EQ(ui->question(), "") << "a form edit is written";
        EXPECT_EQ(read_file(ui->dir / subject.config).find("\"typed\"") != std::string::npos,
                  way.flushes);

        if (way.from_text_view) {
            ui = open_subject(way);
            ui->click("Text View Tab");
            ui->type("Text Panel/Text Editor", "{}");
            way.leave(*ui);
            EXPECT_EQ(ui->question(), way.asks.empty() ? "" : "The Text view" + way.asks);
            if (!way.asks.empty())
                ui->confirm();
            ui->advance(1000);
            EXPECT_EQ(read_file(ui->dir / subject.config), before);
        }

        ui = open_subject(way);
        ui->click(subject.tab);
        ui->type(subject.file_editor, "typed");
        way.leave(*ui);
        EXPECT_EQ(ui->question(), way.asks.empty() ? "" : "The " + (subject.guard + way.asks));
        if (!way.asks.empty()) {
            ui->cancel();
            if (way.subject.field == SITE.field)
                ui->row_action("config-2", "activate"); // from the home screen or in its place
            ui->click(subject.tab);
            EXPECT_EQ(ui->editor_text(subject.file_editor), "typed");
            way.leave(*ui);
            ui->confirm();
        }
        EXPECT_EQ(read_file(ui->dir / subject.document), "old");
        EXPECT_EQ(read_file(ui->dir / subject.config), before);
    }
}

} // namespace
} // namespace TestSupport
