#include "builder/serve/served_site.h"
#include "support/case_file.h"
#include "support/temp_dir.h"

#include <array>
#include <memory>

namespace {

namespace fs = std::filesystem;
using TestSupport::ServedSite;
using TestSupport::TempDir;
using TestSupport::write_file;

constexpr const char* CONFIG =
    R"({"format": 1, "title": "Tidewater", "branding": {"logo_path": "logo.svg"},
  "policies": [{"slug": "privacy", "name": "Privacy", "file": "privacy.md"}]})";

class Served : public testing::Test {
protected:
    static void SetUpTestSuite() {
        dir_ = std::make_unique<TempDir>();
        const fs::path site = *dir_ / "site";
        write_file(site / ".lumenfold-site", CONFIG);
        write_file(site / "privacy.md", "No cookies.");
        write_file(site / "logo.svg", "<svg xmlns='http://www.w3.org/2000/svg'/>");
        write_file(*dir_ / "secret.html", "the secret");
        const fs::path output = site / "output";
        write_file(*dir_ / "outside/index.html", "the secret");
        server_ = std::make_unique<ServedSite>(site);
        ASSERT_NE(server_->port(), 0);
        // What somebody may have put into the folder.
        write_file(output / "data.json", "0123456789");
        write_file(output / "UPPER.TXT", "text");
        write_file(output / "odd", "odd");
        write_file(output / ".hidden/page.html", "the secret");
        write_file(output / "a folder/ü.html", "<head></head>found");
        fs::create_directory(output / "empty");
        fs::create_symlink(*dir_ / "secret.html", output / "link.html");
        fs::create_directory_symlink(*dir_ / "outside", output / "linked");
        fs::create_symlink(output / "data.json", output / "inside.json");
    }
    static void TearDownTestSuite() {
        server_.reset();
        dir_.reset();
    }

    static inline std::unique_ptr<TempDir> dir_;
    static inline std::unique_ptr<ServedSite> server_;
};

std::string header(const std::string& answer, const std::string& name) {
    const std::size_t at = answer.find("\r\n" + name + ": ");
    if (at == std::string::npos || at > answer.find("\r\n\r\n"))
        return "";
    const std::size_t begin = at + name.size() + 4;
    return answer.substr(begin, answer.find('\r', begin) - begin);
}

std::string body(const std::string& answer) {
    const std::size_t at = answer.find("\r\n\r\n");
    return at == std::string::npos ? "" : answer.substr(at + 4);
}

/// The status, and what it was given for.
std::string outcome(const std::string& answer) {
    if (!answer.starts_with("HTTP/1.1 "))
        return "closed";
    EXPECT_EQ(answer.find("secret"), std::string::npos) << answer;
    const std::string status = answer.substr(9, 3);
    if (status == "200")
        return status + " " + header(answer, "Content-Type");
    return status == "301" ? status + " " + header(answer, "Location") : status;
}

TEST_F(Served, AnswersOrRefuses) {
    TestSupport::expect_lines(
        "tests/builder/serve/cases/requests.txt", [](const std::string& asked) {
            const std::size_t blank = asked.find(' ');
            const std::size_t host = asked.find(" Host: ");
            const std::string path = asked.substr(blank + 1, host - blank - 1);
            return outcome(server_->get(path, asked.substr(0, blank),
                                        host == asked.npos ? "localhost" : asked.substr(host + 7)));
        });
}

TEST_F(Served, SendsHeadersWithoutABody) {
    const std::string whole = server_->get("/privacy.html");
    const std::string head = server_->get("/privacy.html", "HEAD");
    EXPECT_EQ(body(head), "");
    EXPECT_EQ(header(head, "Content-Length"), std::to_string(body(whole).size()));
    EXPECT_EQ(header(head, "Content-Security-Policy"), "default-src 'self'");
    EXPECT_EQ(header(head, "X-Content-Type-Options"), "nosniff");
}

TEST_F(Served, ShowsThePageForWhatIsMissing) {
    EXPECT_NE(server_->get("/no/such/page.html").find("Page not found"), std::string::npos);
}

TEST_F(Served, SendsOnePartOfAFile) {
    const auto part = [](const std::string& range) {
        return server_->answer_to(
            "GET /data.json HTTP/1.1\r\nHost: localhost\r\nRange: bytes=" + range + "\r\n\r\n");
    };
    EXPECT_EQ(outcome(part("2-4")), "206");
    EXPECT_EQ(body(part("2-4")), "234");
    EXPECT_EQ(body(part("0-,0-,0-,0-")), "0123456789") << "never more than there is";
}

/// What a browser never sends; that the server still answers is what matters.
TEST_F(Served, SurvivesHostileRequests) {
    const std::string get = "GET / HTTP/1.1\r\nHost: localhost\r\n";
    std::string many = get;
    for (int i = 0; i < 20000; ++i)
        many += "X" + std::to_string(i) + ": a\r\n";
    for (const std::string& request :
         {std::string(1000, '\0') + "\r\n\r\n",
          get + "X: " + std::string(1 << 20, 'a') + "\r\n\r\n", many + "\r\n",
          "GET /" + std::string(1 << 20, 'a') + " HTTP/1.1\r\nHost: localhost\r\n\r\n",
          std::string("GET / HTTP/9.9\r\n\r\n"), get + "Content-Length: -1\r\n\r\n",
          get + "Content-Length: 99999999999999999999\r\n\r\n",
          get + "Range: bytes=9-1,99999999999999999999-\r\n\r\n", std::string("\r\n\r\n\r\n")}) {
        const std::string answer = outcome(server_->answer_to(request));
        EXPECT_TRUE(answer == "closed" || answer[0] == '4' ||
                    answer == "200 text/html; charset=utf-8")
            << answer;
        EXPECT_EQ(outcome(server_->get("/data.json")), "200 application/json");
    }
}

TEST(Serve, FollowsEditsAndTellsWhatIsBroken) {
    const TempDir dir;
    const fs::path site = dir / "site";
    write_file(site / ".lumenfold-site", CONFIG);
    write_file(site / "privacy.md", "No cookies.");
    const ServedSite server(site);
    ASSERT_NE(server.port(), 0);
    const auto generation = [&] { return body(server.get("/.lumenfold/generation")); };
    const std::string first = generation();

    const std::string page = server.get("/privacy.html");
    EXPECT_NE(page.find("src=\"/.lumenfold/reload.js\""), std::string::npos);
    EXPECT_NE(page.find("logo.svg"), std::string::npos) << "the missing logo is told in the page";

    write_file(site / "logo.svg", "<svg xmlns='http://www.w3.org/2000/svg'/>");
    EXPECT_EQ(server.wait_without("/", "build-problem").find("build-problem"), std::string::npos);
    EXPECT_EQ(outcome(server.get("/logo.svg")), "200 image/svg+xml");
    EXPECT_NE(generation(), first);

    for (const std::string word : {"logs", "tears", "ads", "names"}) {
        write_file(site / "privacy.md", "No " + word + ".");
        EXPECT_NE(server.wait_for("/privacy.html", word).find(word), std::string::npos)
            << "an edit that comes while the last one is built is not lost";
    }

    write_file(site / ".lumenfold-site", "{\"title\": <b>");
    const std::string broken = server.wait_for("/privacy.html", "build-problem");
    EXPECT_NE(broken.find("is no valid JSON"), std::string::npos);
    EXPECT_EQ(broken.find("<b>\n"), std::string::npos) << "a message is text";
    EXPECT_NE(broken.find("No names."), std::string::npos) << "the page is still there";

    write_file(site / ".lumenfold-site", CONFIG);
    EXPECT_EQ(server.wait_without("/privacy.html", "build-problem").find("build-problem"),
              std::string::npos);
    const std::string last = generation();
    EXPECT_EQ(generation(), last) << "pages load again only after a change";
}

} // namespace
