#include "desktop/services/http.h"
#include "desktop/services/loopback_server.h"
#include "screens/update_section.h"
#include "support/app_story.h"

#include <QTest>

namespace Corvel {
namespace {

const std::string dialog = "App/Update Dialog";

/// An application of version 1.5 with an update section, from "start" on.
class UpdateStory : public TestSupport::AppStory {
public:
    UpdateStory()
        : AppStory(TestSupport::read_file(SOURCE_ROOT "/tests/screens/cases/update_screens.lyr")) {
        app->app_version = "1.5";
        app->store = {{"update.manifest_url", "https://u.example/m.json"},
                      {"update.platform_key", "os"},
                      {"update.check_hours", "24"}};
        app->store_write = [this](const std::string& key, const std::string& value) {
            if (key != "update.last_check")
                written += key + "=" + value + ";";
        };
        verbs["version"] = act([this](auto& version) { app->app_version = version; });
        verbs["set"] = act([this](auto& what) { // a key of the store and its value
            std::istringstream words(what);
            std::string key, value;
            words >> key >> value;
            app->store["update." + key] = value;
        });
        verbs["start"] = act([this](auto&) { install_update_section(app.app, "App", "Main"); });
        verbs["press"] = act([this](auto& button) {
            app->dispatch_event(dialog + "/Body/Actions/" + button + " Button", "click");
        });
        verbs["check"] = act([this](auto&) {
            app->dispatch_event("App/Main/Settings Menu/App Settings/Version Section/Actions/"
                                "Check Updates Button",
                                "click");
        });
        verbs["reply"] = act([this](auto& manifest) { // to the last check
            platform.http_calls.back().reply({200, manifest, ""});
        });
        verbs["reply_first"] = act([this](auto& manifest) {
            platform.http_calls.front().reply({200, manifest, ""});
        });
        verbs["fail"] = act([this](auto& words) { // the last check
            platform.http_calls.back().reply({0, "", words});
        });
        verbs["checks"] = [this](auto& milliseconds) { // so far, after that time
            platform.advance(std::stoi(milliseconds));
            return std::to_string(platform.http_calls.size());
        };
        verbs["timers"] = [this](auto&) { return yes(platform.timers_waiting() > 0); };
        verbs["written"] = [this](auto&) { return written; };
        verbs["said"] = [this](auto&) { return said(); };
        verbs["served"] = [this](auto& answer) { return served(answer); };
    }

    /// What the dialog says, then its buttons; empty while it is hidden.
    std::string said() {
        if (!app.shows(dialog))
            return "";
        std::string content = app.node(dialog + "/Body/Status").text;
        if (app.shows(dialog + "/Body/Busy Icon"))
            content += " (busy)";
        for (const std::string button : {"Download", "Notes", "Skip", "Later"}) {
            const std::string path = dialog + "/Body/Actions/" + button + " Button";
            if (app.shows(path))
                content += " [" + (button == "Later" ? app.node(path).text.get() : button) + "]";
        }
        return content;
    }

    /// What the dialog says by itself and what when asked, of a server that answers with the
    /// status and the manifest.
    std::string served(const std::string& answer_text) {
        const QByteArray manifest = QByteArray::fromStdString(answer_text).sliced(4);
        LoopbackServer server([&](const LoopbackServer::Request&, QTcpSocket& socket) {
            if (answer_text.starts_with("cut")) { // in the midst of the manifest
                socket.write("HTTP/1.1 200 OK\r\nContent-Length: 900\r\n\r\n" + manifest);
                socket.disconnectFromHost();
            } else if (answer_text.starts_with("big")) {
                answer_without_end(socket, sent);
            } else {
                answer(socket, answer_text.starts_with("404") ? "404 Not Found" : "200 OK",
                       manifest);
            }
        });
        install_qt_http(app.app);
        app->store["update.manifest_url"] =
            answer_text.starts_with("000") ? "http://127.0.0.1:1/" : server.url("/");
        install_update_section(app.app, "App", "Main");
        const auto wait_for_answer = [&] {
            app->store.erase("update.last_check");
            return QTest::qWaitFor([&] { return !app->store_get("update.last_check").empty(); },
                                   10'000);
        };
        platform.advance(3000);
        EXPECT_TRUE(wait_for_answer());
        const std::string by_itself = said();
        verbs["check"]("");
        EXPECT_EQ(said(), "Checking for updates... (busy) [Close]");
        EXPECT_TRUE(wait_for_answer());
        return by_itself + " | " + said();
    }

    std::string written;
    qint64 sent = 0;
};

[[maybe_unused]] const bool registered = TestSupport::register_stories<UpdateStory>(
    "UpdateSection", "tests/screens/cases/update_section.txt");

} // namespace
} // namespace Corvel
