#include "support/fake_platform.h"
#include "update/update_check.h"

#include <gtest/gtest.h>

#include <optional>

namespace Corvel {
namespace {

struct ManifestCase {
    std::string text;
    std::string error; ///< empty: understood
    std::string latest_version = {};
    std::string notes_url = {};
    std::string download_page = {};
    std::string download_url = {};
};

TEST(UpdateManifest, IsReadByItsKeysAndTypes) {
    const std::string no_object = "manifest is not a JSON object";
    const std::string no_version = "manifest has no \"version\"";
    const std::string deep(1001, '[');
    const ManifestCase cases[] = {
        {R"({"version": "2.0", "other": 1})", "", "2.0"},
        {R"({"version": "2.0", "notes_url": "n", "download_page": "p"})", "", "2.0", "n", "p", "p"},
        {R"({"version": "2.0", "platforms": {"os": {"url": "u"}}})", "", "2.0", "", "", "u"},
        {R"({"version": "2.0", "download_page": "p", "platforms": {"os": {"url": "u"}, "b": 1}})",
         "", "2.0", "", "p", "u"},
        {R"({"version": "2.0", "download_page": "p", "platforms": {"other": {"url": "u"}}})", "",
         "2.0", "", "p", "p"},
        {R"({"version": "2.0", "download_page": "p", "platforms": {"os": {"url": 1}}})", "", "2.0",
         "", "p", "p"},
        {R"({"version": "2.0", "download_page": "p", "platforms": {"os": "u"}})", "", "2.0", "",
         "p", "p"},
        {R"({"version": "2.0", "download_page": "p", "platforms": ["os"]})", "", "2.0", "", "p",
         "p"},
        {R"({"version": "2.0", "notes_url": 1, "download_page": null})", "", "2.0"},
        {R"({"version": 2})", no_version},
        {R"({"version": ""})", no_version},
        {R"({"version": null})", no_version},
        {"{}", no_version},
        {"[]", no_object},
        {"\"version\"", no_object},
        {"", no_object},
        {"{", no_object},
        {R"({"version": 1e999})", no_object},
        {R"({"version": "2.0", "x": )" + deep + std::string(1001, ']') + "}", no_object},
        {"{\"version\": \"\xff\"}", no_object},
    };
    for (const ManifestCase& c : cases) {
        UpdateResult result;
        EXPECT_EQ(parse_update_manifest(c.text, "os", result), c.error.empty()) << c.text;
        EXPECT_EQ(result.error, c.error) << c.text;
        EXPECT_EQ(result.latest_version, c.latest_version) << c.text;
        EXPECT_EQ(result.notes_url, c.notes_url) << c.text;
        EXPECT_EQ(result.download_page, c.download_page) << c.text;
        EXPECT_EQ(result.download_url, c.download_url) << c.text;
    }
}

class UpdateCheckTest : public testing::Test {
protected:
    UpdateCheckTest() { app.app_version = "1.5"; }

    void check() {
        check_for_update(app, settings, [this](const UpdateResult& r) { result = r; });
    }

    CorvelApp app;
    TestSupport::FakePlatform platform{app};
    UpdateSettings settings{"https://u.example/m.json", "os", 24};
    std::optional<UpdateResult> result;
};

TEST_F(UpdateCheckTest, SettingsComeFromTheStore) {
    EXPECT_EQ(read_update_settings(app).check_hours, 24);
    EXPECT_EQ(read_update_settings(app).manifest_url, "");
    app.store = {
        {"update.manifest_url", "u"}, {"update.platform_key", "p"}, {"update.check_hours", "-3x"}};
    EXPECT_EQ(read_update_settings(app).manifest_url, "u");
    EXPECT_EQ(read_update_settings(app).platform_key, "p");
    EXPECT_EQ(read_update_settings(app).check_hours, -3);
    app.store["update.check_hours"] = "soon";
    EXPECT_EQ(read_update_settings(app).check_hours, 0);
}

TEST_F(UpdateCheckTest, RefusesToStartWithoutAddressOrVersion) {
    app.app_version.clear();
    check();
    EXPECT_EQ(result.value().error, "no app version set");
    settings.manifest_url.clear();
    check();
    EXPECT_EQ(result.value().error, "no update manifest url configured");
    EXPECT_TRUE(platform.http_calls.empty());
    EXPECT_EQ(app.store_get("update.last_check"), "");
}

TEST_F(UpdateCheckTest, AsksOnceAndWaits) {
    check();
    ASSERT_EQ(platform.http_calls.size(), 1u);
    const HttpRequest& request = platform.http_calls[0].request;
    EXPECT_EQ(request.method, "GET");
    EXPECT_EQ(request.url, "https://u.example/m.json");
    EXPECT_TRUE(request.headers.empty() && request.body.empty() && request.content_type.empty());
    EXPECT_FALSE(result);
}

TEST_F(UpdateCheckTest, TellsEachOutcomeAndRemembersTheTime) {
    const struct {
        HttpResponse response;
        bool success;
        bool available;
        std::string error;
    } cases[] = {
        {{200, R"({"version": "1.5.1"})", ""}, true, true, ""},
        {{200, R"({"version": "1.5.0"})", ""}, true, false, ""},
        {{200, R"({"version": "1.5.1-rc.1"})", ""}, true, true, ""},
        {{200, R"({"version": "0.9"})", "ignored"}, true, false, ""},
        {{200, "<html>", ""}, false, false, "manifest is not a JSON object"},
        {{404, R"({"version": "9"})", "x"}, false, false, "manifest fetch returned HTTP 404"},
        {{0, "", "Host not found"}, false, false, "Host not found"},
        {{0, "", ""}, false, false, "network failure"},
    };
    for (const auto& c : cases) {
        app.store.erase("update.last_check");
        std::string written;
        app.store_write = [&](const std::string& key, const std::string& value) {
            written = key + "=" + value;
        };
        check();
        platform.http_calls.back().reply(c.response);
        EXPECT_EQ(result.value().success, c.success) << c.response.body;
        EXPECT_EQ(result.value().update_available, c.available) << c.response.body;
        EXPECT_EQ(result.value().error, c.error);
        EXPECT_GT(std::stoll(app.store_get("update.last_check")), 1'700'000'000);
        EXPECT_EQ(written, "update.last_check=" + app.store_get("update.last_check"));
    }
}

TEST_F(UpdateCheckTest, AnswersAtOnceWithoutAService) {
    app.http = {};
    check();
    EXPECT_EQ(result.value().error, "no http handler installed");
    EXPECT_NE(app.store_get("update.last_check"), "");
}

} // namespace
} // namespace Corvel
