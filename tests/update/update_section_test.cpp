#include "runtime/app_fixture.h"
#include "support/fake_platform.h"
#include "update/update_section.h"

#include <gtest/gtest.h>

namespace Corvel {
namespace {

const std::string screens = R"(App:
    Main/Settings Menu/App Settings/Version Section:
        Current Version << Corvel/Text
        Actions/Check Updates Button << Corvel/Button
    Update Dialog:
        Titlebar/Exit Button << Corvel/Button
        Body:
            Status << Corvel/Text
            Actions:
                (Download, Notes, Skip, Later) Button << Corvel/Button
)";

const std::string dialog = "App/Update Dialog";
const std::string actions = dialog + "/Body/Actions";
const std::string section = "App/Main/Settings Menu/App Settings/Version Section";
const std::string check_button = section + "/Actions/Check Updates Button";

constexpr int hour = 3'600'000;

class UpdateSectionTest : public testing::Test {
protected:
    void install(const std::string& version = "1.5", const std::string& hours = "24",
                 const std::string& url = "https://u.example/m.json") {
        app->app_version = version;
        app->store = {{"update.manifest_url", url},
                      {"update.platform_key", "os"},
                      {"update.check_hours", hours}};
        install_update_section(app.app, "App", "Main");
    }

    void click(const std::string& path) { app->dispatch_event(path, "click"); }

    void reply(const std::string& manifest) {
        platform.http_calls.back().reply({200, manifest, ""});
    }

    bool shown(const std::string& path) {
        tree = app->build_render_tree();
        return TestSupport::find_node(tree, path) != nullptr;
    }

    std::string text(const std::string& path) {
        return shown(path) ? std::string(TestSupport::find_node(tree, path)->text) : "(hidden)";
    }

    /// What the dialog says, then its buttons; empty while it is hidden.
    std::string dialog_content() {
        if (!shown(dialog))
            return "";
        std::string content = text(dialog + "/Body/Status");
        for (const char* button : {"Download", "Notes", "Skip"})
            if (shown(actions + "/" + button + " Button"))
                content += std::string(" [") + button + "]";
        return content + " [" + text(actions + "/Later Button") + "]";
    }

    TestSupport::TestApp app{screens};
    TestSupport::FakePlatform platform{app.app};
    RenderNode tree;
};

TEST_F(UpdateSectionTest, WithoutManifestShowsTheVersionOnly) {
    install("", "24", "");
    EXPECT_EQ(text(section + "/Current Version"), "Development Build");
    EXPECT_FALSE(shown(check_button));
    EXPECT_FALSE(shown(dialog));
    EXPECT_EQ(platform.timers_waiting(), 0u);
}

TEST_F(UpdateSectionTest, AManualCheckTellsWhatItDoes) {
    install();
    EXPECT_EQ(text(section + "/Current Version"), "Version 1.5");
    EXPECT_EQ(dialog_content(), "");
    click(check_button);
    EXPECT_EQ(dialog_content(), "Checking for updates... [Close]");
    reply(R"({"version": "1.5"})");
    EXPECT_EQ(dialog_content(), "You're up to date (1.5). [Close]");
    click(actions + "/Later Button");
    EXPECT_EQ(dialog_content(), "");

    click(check_button);
    click(dialog + "/Titlebar/Exit Button");
    EXPECT_EQ(dialog_content(), "");
    platform.http_calls.back().reply({500, "", ""});
    EXPECT_EQ(dialog_content(),
              "Could not check for updates: manifest fetch returned HTTP 500 [Close]");
}

TEST_F(UpdateSectionTest, ADevelopmentBuildCannotCheck) {
    install("");
    click(check_button);
    EXPECT_EQ(dialog_content(), "Could not check for updates: no app version set [Close]");
}

TEST_F(UpdateSectionTest, OffersWhatTheManifestHas) {
    install();
    const std::string words = "Version 2.0 is available. You have 1.5.";
    const std::pair<std::string, std::string> cases[] = {
        {R"({"version": "2.0"})", words + " [Skip] [Later]"},
        {R"({"version": "2.0", "notes_url": "n"})", words + " [Notes] [Skip] [Later]"},
        {R"({"version": "2.0", "download_page": "p"})", words + " [Download] [Skip] [Later]"},
        {R"({"version": "2.0", "notes_url": "n", "download_page": "p"})",
         words + " [Download] [Notes] [Skip] [Later]"},
    };
    for (const auto& [manifest, content] : cases) {
        click(check_button);
        reply(manifest);
        EXPECT_EQ(dialog_content(), content);
    }
    click(actions + "/Notes Button");
    EXPECT_TRUE(shown(dialog));
    click(actions + "/Download Button");
    EXPECT_FALSE(shown(dialog));
    EXPECT_EQ(platform.opened_urls, (std::vector<std::string>{"n", "p"}));
}

TEST_F(UpdateSectionTest, ASkippedVersionIsShownToWhoAsks) {
    install();
    std::vector<std::string> written;
    app->store_write = [&](const std::string& key, const std::string& value) {
        if (key != "update.last_check")
            written.push_back(key + "=" + value);
    };
    platform.advance(3000);
    reply(R"({"version": "2.0"})");
    EXPECT_TRUE(shown(dialog));
    click(actions + "/Skip Button");
    EXPECT_FALSE(shown(dialog));
    EXPECT_EQ(written, std::vector<std::string>{"update.skip_version=2.0"});

    platform.advance(24 * hour);
    reply(R"({"version": "2.0"})");
    EXPECT_FALSE(shown(dialog));
    click(check_button);
    reply(R"({"version": "2.0"})");
    EXPECT_TRUE(shown(dialog));
    click(actions + "/Later Button");
    platform.advance(24 * hour);
    reply(R"({"version": "2.1"})");
    EXPECT_EQ(dialog_content(), "Version 2.1 is available. You have 1.5. [Skip] [Later]");
}

TEST_F(UpdateSectionTest, AnAutomaticCheckKeepsQuietOtherwise) {
    install();
    platform.advance(3000);
    platform.http_calls.back().reply({0, "", "offline"});
    EXPECT_FALSE(shown(dialog));
    platform.advance(24 * hour);
    reply(R"({"version": "1.5"})");
    EXPECT_FALSE(shown(dialog));
}

TEST_F(UpdateSectionTest, ButtonsActOnTheLastResult) {
    install();
    click(check_button);
    reply(R"({"version": "2.0", "notes_url": "first"})");
    platform.advance(3000);
    reply(R"({"version": "3.0", "notes_url": "second"})");
    click(actions + "/Notes Button");
    EXPECT_EQ(platform.opened_urls, std::vector<std::string>{"second"});
    app->open_url = {};
    click(actions + "/Notes Button");
}

TEST_F(UpdateSectionTest, ChecksOnSchedule) {
    const struct {
        const char* hours;
        int period; ///< in hours; 0: the check after the start is the only one
    } cases[] = {{"24", 24}, {"1", 1}, {"168", 168}, {"1000", 168}, {"", 24}, {"0", 0}, {"-5", 0}};
    for (const auto& c : cases) {
        TestSupport::TestApp fresh(screens);
        TestSupport::FakePlatform clock(fresh.app);
        fresh->app_version = "1.5";
        fresh->store = {{"update.manifest_url", "u"}, {"update.check_hours", c.hours}};
        install_update_section(fresh.app, "App", "Main");
        EXPECT_EQ(clock.timers_waiting(), c.period > 0 ? 2u : 1u) << c.hours;
        clock.advance(2999);
        EXPECT_EQ(clock.http_calls.size(), 0u) << c.hours;
        clock.advance(1);
        EXPECT_EQ(clock.http_calls.size(), 1u) << c.hours;
        if (c.period == 0)
            continue;
        clock.advance(c.period * hour - 3001);
        EXPECT_EQ(clock.http_calls.size(), 1u) << c.hours;
        clock.advance(1);
        EXPECT_EQ(clock.http_calls.size(), 2u) << c.hours;
        clock.advance(c.period * hour);
        EXPECT_EQ(clock.http_calls.size(), 3u) << c.hours;
    }
}

} // namespace
} // namespace Corvel
