#include "desktop/services/http.h"
#include "desktop/services/loopback_server.h"
#include "runtime/app_fixture.h"
#include "support/fake_platform.h"
#include "update/update_section.h"

#include <gtest/gtest.h>

#include <QTest>

namespace Corvel {
namespace {

const std::string screens = R"(App:
    Main/Settings Menu/App Settings/Version Section:
        Current Version << Corvel/Text
        Actions/Check Updates Button << Corvel/Button
    Update Dialog:
        Titlebar/Exit Button << Corvel/Button
        Body:
            Busy Icon << Corvel/Icon
            Status << Corvel/Text
            Actions:
                (Download, Notes, Skip, Later) Button << Corvel/Button
)";

const std::string dialog = "App/Update Dialog";
const std::string actions = dialog + "/Body/Actions/";
const std::string section = "App/Main/Settings Menu/App Settings/Version Section";
const std::string check_button = section + "/Actions/Check Updates Button";

constexpr int hour = 3'600'000;

/// An application of version 1.5 with an update section.
struct UpdatingApp {
    void install(const std::map<std::string, std::string>& store = {},
                 const std::string& version = "1.5") {
        app->app_version = version;
        app->store = {{"update.manifest_url", "https://u.example/m.json"},
                      {"update.platform_key", "os"},
                      {"update.check_hours", "24"}};
        for (const auto& [key, value] : store)
            app->store[key] = value;
        install_update_section(app.app, "App", "Main");
    }

    void click(const std::string& path) { app->dispatch_event(path, "click"); }

    void reply(const std::string& manifest) {
        platform.http_calls.back().reply({200, manifest, ""});
    }

    /// What the dialog says, then its buttons; empty while it is hidden.
    std::string said() {
        if (!app.shows(dialog))
            return "";
        std::string content = app.node(dialog + "/Body/Status").text;
        if (app.shows(dialog + "/Body/Busy Icon"))
            content += " (busy)";
        for (const char* button : {"Download", "Notes", "Skip"})
            if (app.shows(actions + button + " Button"))
                content += std::string(" [") + button + "]";
        return content + " [" + app.node(actions + "Later Button").text.get() + "]";
    }

    TestSupport::TestApp app{screens};
    TestSupport::FakePlatform platform{app.app};
};

TEST(UpdateSection, TellsTheOutcomeOfEachCheck) {
    LoopbackServer server([](const LoopbackServer::Request& request, QTcpSocket& socket) {
        const QByteArray path = QByteArray::fromPercentEncoding(request.path.c_str());
        answer(socket, path.startsWith("/404") ? "404 Not Found" : "200 OK", path.sliced(5));
    });
    const std::string offer = "Version 2.0 is available. You have 1.5.";
    const std::string fresh = "You're up to date (1.5). [Close]";
    const std::string failed = "Could not check for updates: ";
    const struct {
        const char* status;
        const char* manifest;
        std::string manual;
        bool automatic; ///< whether the same dialog comes by itself
    } cases[] = {
        {"/200", R"({"version": "2.0"})", offer + " [Skip] [Later]", true},
        {"/200", R"({"version": "2.0", "notes_url": "n"})", offer + " [Notes] [Skip] [Later]",
         true},
        {"/200", R"({"version": "2.0", "notes_url": "n", "download_page": "p"})",
         offer + " [Download] [Notes] [Skip] [Later]", true},
        {"/200", R"({"version": "1.6-rc.1"})",
         "Version 1.6-rc.1 is available. You have 1.5. [Skip] [Later]", true},
        {"/200", R"({"version": "1.9"})", "Version 1.9 is available. You have 1.5. [Skip] [Later]",
         false}, // skipped
        {"/200", R"({"version": "1.5.0"})", fresh, false},
        {"/200", R"({"version": "1.5-rc.1"})", fresh, false},
        {"/200", R"({"version": "0.9"})", fresh, false},
        {"/200", "<html>", failed + "manifest is not a JSON object [Close]", false},
        {"/200", "{}", failed + "manifest has no \"version\" [Close]", false},
        {"/404", R"({"version": "2.0"})", failed + "manifest fetch returned HTTP 404 [Close]",
         false},
        {"dead", "", failed + "Connection refused [Close]", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.manifest);
        const std::string path =
            QByteArray(c.manifest).toPercentEncoding().prepend('/').prepend(c.status).toStdString();
        UpdatingApp updating;
        install_qt_http(updating.app.app);
        updating.install(
            {{"update.manifest_url", c.status[0] == 'd' ? "http://127.0.0.1:1/" : server.url(path)},
             {"update.skip_version", "1.9"}});
        const auto wait_for_answer = [&] {
            updating.app->store.erase("update.last_check");
            return QTest::qWaitFor(
                [&] { return !updating.app->store_get("update.last_check").empty(); }, 10'000);
        };
        updating.platform.advance(3000);
        EXPECT_TRUE(wait_for_answer());
        EXPECT_EQ(updating.said(), c.automatic ? c.manual : "");
        updating.click(check_button);
        EXPECT_EQ(updating.said(), "Checking for updates... (busy) [Close]");
        EXPECT_TRUE(wait_for_answer());
        EXPECT_EQ(updating.said(), c.manual);
    }
}

TEST(UpdateSection, ShowsTheVersion) {
    const struct {
        const char* version;
        const char* url;
        const char* shown;
        bool can_check;
    } cases[] = {{"1.5", "u", "Version 1.5", true},
                 {"", "u", "Development Build", true},
                 {"", "", "Development Build", false}};
    for (const auto& c : cases) {
        UpdatingApp updating;
        updating.install({{"update.manifest_url", c.url}}, c.version);
        EXPECT_EQ(updating.app.node(section + "/Current Version").text, c.shown);
        EXPECT_EQ(updating.app.shows(check_button), c.can_check);
        EXPECT_EQ(updating.said(), "");
        EXPECT_EQ(updating.platform.timers_waiting() > 0, c.can_check);
    }
    UpdatingApp development;
    development.install({}, "");
    development.click(check_button);
    EXPECT_EQ(development.said(), "Could not check for updates: no app version set [Close]");
}

TEST(UpdateSection, ButtonsActOnTheLastResult) {
    UpdatingApp updating;
    updating.install();
    std::vector<std::string> written;
    updating.app->store_write = [&](const std::string& key, const std::string& value) {
        if (key != "update.last_check")
            written.push_back(key + "=" + value);
    };
    updating.click(check_button);
    updating.platform.advance(3000);
    updating.reply("{}"); // to the automatic check: the user still waits for the other
    EXPECT_EQ(updating.said(), "Checking for updates... (busy) [Close]");
    updating.click(dialog + "/Titlebar/Exit Button");
    EXPECT_EQ(updating.said(), "");
    updating.platform.http_calls.front().reply(
        {200, R"({"version": "2.0", "notes_url": "first"})", ""}); // comes back with the answer
    updating.platform.advance(24 * hour);
    updating.reply(R"({"version": "3.0", "notes_url": "second",
                       "platforms": {"os": {"url": "file"}}})");
    updating.click(actions + "Notes Button");
    EXPECT_NE(updating.said(), "");
    updating.click(actions + "Download Button");
    EXPECT_EQ(updating.said(), "");
    EXPECT_EQ(updating.platform.opened_urls, (std::vector<std::string>{"second", "file"}));
    updating.app->open_url = {};
    updating.click(actions + "Notes Button");

    updating.click(actions + "Skip Button");
    EXPECT_EQ(written, std::vector<std::string>{"update.skip_version=3.0"});
    updating.platform.advance(24 * hour);
    updating.reply(R"({"version": "3.0"})");
    EXPECT_EQ(updating.said(), "");
    updating.platform.advance(24 * hour);
    updating.reply(R"({"version": "3.1"})");
    EXPECT_EQ(updating.said(), "Version 3.1 is available. You have 1.5. [Skip] [Later]");
    updating.click(actions + "Later Button");
    EXPECT_EQ(updating.said(), "");
}

TEST(UpdateSection, ChecksOnSchedule) {
    const struct {
        const char* hours;
        int period; ///< in hours; 0: the check after the start is the only one
    } cases[] = {{"24", 24}, {"1", 1}, {"168", 168}, {"1000", 168}, {"", 24}, {"0", 0}, {"-5", 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.hours);
        UpdatingApp updating;
        updating.install({{"update.check_hours", c.hours}});
        const auto checks_after = [&](int milliseconds) {
            updating.platform.advance(milliseconds);
            return updating.platform.http_calls.size();
        };
        EXPECT_EQ(checks_after(2999), 0u);
        EXPECT_EQ(checks_after(1), 1u);
        if (c.period == 0) {
            EXPECT_EQ(checks_after(500 * hour), 1u);
            continue;
        }
        EXPECT_EQ(checks_after(c.period * hour - 3001), 1u);
        EXPECT_EQ(checks_after(1), 2u);
        EXPECT_EQ(checks_after(c.period * hour), 3u);
    }
}

} // namespace
} // namespace Corvel
