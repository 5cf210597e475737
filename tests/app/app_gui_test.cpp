#include "app_window.h"
#include "desktop/widgets/combo_widget.h"
#include "desktop/widgets/editor_widget.h"
#include "site_paths.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QCoreApplication>
#include <QLineEdit>
#include <QPoint>
#include <QTextEdit>
#include <QWidget>

namespace TestSupport {
namespace {

const std::string CONFIRM = "App/Confirm Dialog/Body/Actions/Confirm Button";
const std::string CANCEL = "App/Confirm Dialog/Body/Actions/Cancel Button";

struct RealWindow : testing::Test {
    AppWindow ui;

    std::filesystem::path site(const std::string& name, const std::string& text) {
        const auto file = ui.dir / (name + "/.lumenfold-site");
        write_file(file, text);
        return file;
    }
};

TEST_F(RealWindow, AKeystrokeReachesTheFile) {
    const auto file = copy_example(ui.dir / "example");
    const std::string before = read_file(file);
    ui.start({file});
    ui.type(TITLE_FIELD, "Ebb and Flow");
    ui.advance(500);
    const std::string after = read_file(file);
    EXPECT_NE(after.find("  \"title\": \"Ebb and Flow\",\n"), std::string::npos);
    EXPECT_EQ(after.substr(after.find("\n  \"url\"")), before.substr(before.find("\n  \"url\"")));
    ui.click(SITE_TEXT_TAB);
    EXPECT_EQ(ui.editor_text(SITE_TEXT), after);
}

TEST_F(RealWindow, ABadPathAtTheStartOpensAModalWindow) {
    ui.start({ui.dir / "nothing"});
    QWidget* dialog = ui.widget("App/Message Dialog");
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->window() != ui.window.get());
    EXPECT_TRUE(dialog->window()->isVisible());
    EXPECT_TRUE(dialog->window()->isModal());
    for (const char* other : {"App/Confirm Dialog", "App/Add Policy Dialog",
                              "App/Edit Section Dialog", "App/Add Social Dialog"})
        EXPECT_EQ(ui.widget(other), nullptr) << other;
    ui.click("App/Message Dialog/Body/OK Button");
    EXPECT_EQ(ui.widget("App/Message Dialog"), nullptr);
}

TEST_F(RealWindow, WhatWasTypedForOneSiteNeverShowsInTheNext) {
    const auto a = site("a", R"({"output": "./output"})");
    const auto b = site("b", R"({"output": "./output"})");
    ui.start({b, a});
    ui.type(OUTPUT_FIELD, "./mine");
    ui.type(LOGO_HEIGHT, "99"); // refused, and so in no file
    ui.row_action(left_tab(1), "activate");
    EXPECT_EQ(ui.editor_text(OUTPUT_FIELD), "./output");
    EXPECT_EQ(ui.editor_text(LOGO_HEIGHT), "");
    ui.advance(1000);
    EXPECT_EQ(read_file(b), R"({"output": "./output"})");
    EXPECT_NE(read_file(a).find("./mine"), std::string::npos);
}

TEST_F(RealWindow, AnEmptiedFieldIsNotRestoredIntoTheNextConfiguration) {
    const auto a = site("a", R"({"title": "A"})");
    write_file(ui.dir / "p/.lumenfold-project", R"({"slug": "p"})");
    ui.start({ui.dir / "p/.lumenfold-project", a});
    ui.type(TITLE_FIELD, "");
    ui.row_action(left_tab(1), "activate");
    ui.advance(1000);
    EXPECT_EQ(read_file(ui.dir / "p/.lumenfold-project"), R"({"slug": "p"})");
    EXPECT_EQ(read_file(a), "{\n  \"title\": \"\"\n}\n");
}

TEST_F(RealWindow, DiscardReachesTheEditorsThatStayUp) {
    ui.start({site("a", R"({"policies": [{"name": "A"}, {"name": "B", "file": "b.md"},
                            {"name": "C", "file": "c.md"}]})")});
    write_file(ui.dir / "a/b.md", "same");
    write_file(ui.dir / "a/c.md", "same");
    ui.click(section_tab("Policies"));
    auto* combo = qobject_cast<Corvel::ComboWidget*>(ui.widget(POLICY_COMBO))->combo;
    const auto choose = [&](int index) {
        combo->setCurrentIndex(index);
        Q_EMIT combo->activated(index);
        QCoreApplication::processEvents();
    };
    choose(1);
    ui.type(POLICY_EDITOR, "typed");
    choose(2);
    EXPECT_EQ(combo->currentIndex(), 1); // asked first; the box shows what the form shows
    ui.click(CANCEL);
    EXPECT_EQ(ui.editor_text(POLICY_EDITOR), "typed");
    choose(2);
    ui.click(CONFIRM);
    EXPECT_EQ(combo->currentIndex(), 2);
    EXPECT_EQ(ui.editor_text(POLICY_EDITOR), "same");

    ui.type(POLICY_EDITOR, "kept");
    ui.click(section_tab("Projects"));
    ui.click(SITE_TEXT_TAB);
    ui.click(CANCEL);
    ui.click(section_tab("Policies"));
    EXPECT_EQ(ui.editor_text(POLICY_EDITOR), "kept");
    ui.click(SITE_TEXT_TAB);
    ui.click(CONFIRM);
    ui.type(SITE_TEXT, "{");
    ui.click(SITE_EDITOR_TAB);
    ui.click(CONFIRM);
    EXPECT_EQ(ui.editor_text(POLICY_EDITOR), "same");
    ui.click(SITE_TEXT_TAB);
    EXPECT_EQ(ui.editor_text(SITE_TEXT), read_file(ui.dir / "a/.lumenfold-site"));
}

TEST_F(RealWindow, TextTypedForAPolicySurvivesAChangeOfTheSocials) {
    ui.start({site("a", R"({"policies": [{"name": "A", "file": "a.md"}]})")});
    write_file(ui.dir / "a/a.md", "old");
    ui.click(SITE_TEXT_TAB);
    ui.click(SITE_EDITOR_TAB);
    ui.click(section_tab("Policies"));
    ui.type(POLICY_EDITOR, "typed");
    ui.click(section_tab("Socials"));
    ui.click(SOCIALS + "/Add Social Button");
    const std::string dialog = "App/Add Social Dialog/Body";
    ui.type(dialog + "/Label Editor", "Forge");
    ui.type(dialog + "/URL Editor", "https://f");
    ui.click(dialog + "/Actions/Create Button");
    ASSERT_NE(ui.widget(SOCIALS + "/Social Cards/social-0"), nullptr);
    ui.click(section_tab("Policies"));
    EXPECT_EQ(ui.editor_text(POLICY_EDITOR), "typed");
    ui.click(POLICY_SAVE);
    EXPECT_EQ(read_file(ui.dir / "a/a.md"), "typed");
}

TEST_F(RealWindow, ASectionMovedDownStandsLowerOnScreen) {
    const auto file = site("a", R"({"home": {"sections": [{"type": "custom", "label": "one"},
                                   {"type": "socials"}, {"type": "projects"}]}})");
    ui.start({file});
    const std::string cards = WEBSITE + "/Home Layout/Section Cards";
    ui.row_action(cards + "/home-0", "down");
    const auto top = [&](const std::string& row) {
        return ui.widget(cards + row)->mapTo(ui.window.get(), QPoint()).y();
    };
    EXPECT_LT(top("/home-0"), top("/home-1"));
    EXPECT_LT(top("/home-1"), top("/home-2"));
    EXPECT_EQ(ui.widget(cards + "/home-0/Edit Button"), nullptr);
    EXPECT_NE(ui.widget(cards + "/home-1/Edit Button"), nullptr);
}

TEST_F(RealWindow, TheDerivedFieldsOfANewPolicyFollowAgainWhenEmptied) {
    ui.start({site("a", "{}")});
    ui.click(section_tab("Policies"));
    ui.click(POLICIES + "/Selector Row/Add Button");
    const std::string body = "App/Add Policy Dialog/Body";
    ui.type(body + "/Name Editor", "One");
    ui.type(body + "/File Row/File Editor", "");
    ui.type(body + "/Name Editor", "Two"); // leaving the emptied field restores nothing
    EXPECT_EQ(ui.editor_text(body + "/Slug Editor"), "two");
    EXPECT_EQ(ui.editor_text(body + "/File Row/File Editor"), "policies/two.md");
}

} // namespace
} // namespace TestSupport
