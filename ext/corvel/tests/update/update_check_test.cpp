#include "support/case_file.h"
#include "support/fake_platform.h"
#include "update/update_check.h"

#include <optional>

namespace Corvel {
namespace {

TEST(CompareVersions, OrdersEachPairBothWays) {
    TestSupport::expect_lines("tests/update/cases/versions.txt", [](const std::string& pair) {
        const std::string a = pair.substr(0, pair.find(" | "));
        const std::string b = pair.substr(a.size() + 3);
        const int order = compare_versions(a, b);
        const int reverse = compare_versions(b, a);
        EXPECT_TRUE(order > 0 ? reverse < 0 : order < 0 ? reverse > 0 : reverse == 0) << pair;
        return order > 0 ? "newer" : order < 0 ? "older" : "same";
    });
}

std::string show_manifest(const std::string& text) {
    UpdateResult result;
    if (!parse_update_manifest(text, "os", result))
        return result.error;
    return result.latest_version + "|" + result.notes_url + "|" + result.download_page + "|" +
           result.download_url;
}

TEST(UpdateManifest, IsReadByItsKeysAndTypes) {
    TestSupport::expect_lines("tests/update/cases/manifests.txt", show_manifest);
    EXPECT_EQ(show_manifest("{\"version\": \"\xff\"}"), "manifest is not a JSON object");
    EXPECT_EQ(show_manifest("{\"version\": \"2\", \"x\": " + std::string(1001, '[') +
                            std::string(1001, ']') + "}"),
              "manifest is not a JSON object");
}

class UpdateCheckTest : public testing::Test {
protected:
    UpdateCheckTest() { app.app_version = "1.5"; }

    std::string error_of_check() {
        result.reset();
        check_for_update(app, settings, [this](const UpdateResult& r) { result = r; });
        return result ? result->error : "none yet";
    }

    CorvelApp app;
    TestSupport::FakePlatform platform{app};
    UpdateSettings settings{"https://u.example/m.json", "os", 24};
    std::optional<UpdateResult> result;
};

TEST_F(UpdateCheckTest, SettingsComeFromTheStore) {
    EXPECT_EQ(read_update_settings(app).check_hours, 24);
    app.store = {
        {"update.manifest_url", "u"}, {"update.platform_key", "p"}, {"update.check_hours", "-3x"}};
    EXPECT_EQ(read_update_settings(app).manifest_url, "u");
    EXPECT_EQ(read_update_settings(app).platform_key, "p");
    EXPECT_EQ(read_update_settings(app).check_hours, -3);
    app.store["update.check_hours"] = "soon";
    EXPECT_EQ(read_update_settings(app).check_hours, 0);
}

TEST_F(UpdateCheckTest, AsksOnceAndRemembersTheTimeOfTheAnswer) {
    EXPECT_EQ(error_of_check(), "none yet");
    ASSERT_EQ(platform.http_calls.size(), 1u);
    const HttpRequest& request = platform.http_calls[0].request;
    EXPECT_EQ(request.method, "GET");
    EXPECT_EQ(request.url, "https://u.example/m.json");
    EXPECT_TRUE(request.headers.empty() && request.body.empty() && request.content_type.empty());
    EXPECT_EQ(app.store_get("update.last_check"), "");
    platform.http_calls[0].reply({0, "", ""});
    EXPECT_EQ(result.value().error, "network failure");
    EXPECT_GT(std::stoll(app.store_get("update.last_check")), 1'700'000'000);
}

TEST_F(UpdateCheckTest, CannotStartWithoutAddressVersionOrService) {
    app.app_version.clear();
    EXPECT_EQ(error_of_check(), "no app version set");
    settings.manifest_url.clear();
    EXPECT_EQ(error_of_check(), "no update manifest url configured");
    EXPECT_EQ(app.store_get("update.last_check"), "");
    EXPECT_TRUE(platform.http_calls.empty());
    app.app_version = "1";
    settings.manifest_url = "u";
    app.http = {};
    EXPECT_EQ(error_of_check(), "no http handler installed");
    EXPECT_NE(app.store_get("update.last_check"), "");
}

} // namespace
} // namespace Corvel
