#include "support/fake_platform.h"
#include "update/update_check.h"

#include <gtest/gtest.h>

#include <optional>

namespace Corvel {
namespace {

int sign(int value) {
    return (value > 0) - (value < 0);
}

struct VersionPair {
    const char* a;
    char order; ///< '<', '=' or '>'
    const char* b;
};

// clang-format off
constexpr VersionPair pairs[] = {
    // Numbers, not texts; missing parts are 0.
    {"1.10.0", '>', "1.9.9"}, {"1.9", '<', "1.10"}, {"2", '>', "1.99.99"}, {"0.0.1", '>', "0"},
    {"1.2", '=', "1.2.0"}, {"1", '=', "1.0.0.0"}, {"1.2.0.1", '>', "1.2"}, {"01.2", '=', "1.02"},
    {"10", '>', "9"}, {"1.0.0", '=', "1.0.0"}, {"1.0.1", '>', "1.0.0"}, {"0.9.9", '<', "1.0"},
    {"1.2.3", '<', "1.2.4"}, {"1.3.0", '>', "1.2.9"}, {"3.0", '>', "2.9.9.9"},
    // A part that is no number counts as 0.
    {"2x.1", '=', "0.1"}, {"1.x", '=', "1"}, {"1..2", '=', "1.0.2"}, {"", '=', "0"}, {"abc", '=', "0.0"},
    {"1.2x", '<', "1.1"}, {".1", '=', "0.1"}, {"1.", '=', "1"}, {"1. 2", '=', "1.0"},
    // Numbers that do not fit.
    {"99999999999", '>', "1"}, {"99999999999", '=', "88888888888"}, {"2147483647", '>', "2147483646"},
    {"1.99999999999999999999999", '>', "1.5"},
    // One leading letter and what follows a plus sign do not count.
    {"v2.0.0", '=', "2.0.0"}, {"V2", '=', "v2"}, {"vv2", '<', "1"}, {"2.0.0+abc", '=', "2.0.0"},
    {"2.0.0+1", '=', "2.0.0+2"}, {"+3", '=', "0"}, {"2.0.0+a-b", '=', "2.0.0"},
    {"2.0.0-rc.1+5", '=', "v2.0.0-rc.1"}, {"v", '=', "0"},
    // A release is newer than what leads to it.
    {"2.0.0-beta", '<', "2.0.0"}, {"2.0.0", '>', "2.0.0-rc.9"}, {"2.0.0-beta", '>', "1.9.9"},
    {"2.0.0-", '=', "2.0.0"}, {"2.0.1-alpha", '>', "2.0.0"}, {"2-0", '<', "2"},
    // Parts of pre-releases: numbers by value, others by bytes, numbers first.
    {"2.0.0-beta.2", '<', "2.0.0-beta.10"}, {"2.0.0-1", '<', "2.0.0-alpha"},
    {"2.0.0-alpha", '<', "2.0.0-alpha.1"}, {"2.0.0-alpha.1", '<', "2.0.0-alpha.beta"},
    {"2.0.0-alpha.beta", '<', "2.0.0-beta"}, {"2.0.0-beta", '<', "2.0.0-beta.2"},
    {"2.0.0-beta.11", '<', "2.0.0-rc.1"}, {"2.0.0-rc.1", '<', "2.0.0"},
    {"2.0.0-2", '<', "2.0.0-10"}, {"2.0.0-02", '=', "2.0.0-2"}, {"2.0.0-B", '<', "2.0.0-a"},
    {"2.0.0-alpha", '<', "2.0.0-alphabet"}, {"2.0.0-rc1", '>', "2.0.0-rc-1"},
    {"2.0.0-beta-2", '>', "2.0.0-beta"}, {"2.0.0-a.b.c", '>', "2.0.0-a.b"}, {"2.0.0-a", '=', "2-a"},
    {"2.0.0-a..b", '<', "2.0.0-a.a"}, {"2.0.0-a.", '>', "2.0.0-a"}, {"2.0.0-1.2", '<', "2.0.0-1.2x"},
    {"2.0.0-20240601120000", '<', "2.0.0-20240601120001"},
    {"2.0.0-99999999999999999999", '>', "2.0.0-9999999999"},
};
// clang-format on

TEST(CompareVersions, OrdersEachPairBothWays) {
    static_assert(std::size(pairs) >= 60);
    for (const VersionPair& pair : pairs) {
        const int expected = pair.order == '<' ? -1 : pair.order == '>' ? 1 : 0;
        EXPECT_EQ(sign(compare_versions(pair.a, pair.b)), expected) << pair.a << ' ' << pair.b;
        EXPECT_EQ(sign(compare_versions(pair.b, pair.a)), -expected) << pair.b << ' ' << pair.a;
    }
}

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
