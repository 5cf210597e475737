#include "builder/pages/search_index.h"
#include "builder/pages/search_terms.h"
#include "sample_site.h"
#include "support/case_file.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace Lumenfold::Builder {
namespace {

namespace fs = std::filesystem;

SearchPage page(const std::string& path, const std::string& title, const std::string& heading,
                const std::string& text, const std::string& version = {}, bool newest = true) {
    SearchPage page;
    page.path = path;
    page.title = title;
    page.project = "Gauge";
    page.version = version;
    page.newest = newest;
    page.headings = {{2, "h", heading}};
    page.sections = {{"", "Something else."}, {"h", text}};
    return page;
}

std::vector<SearchPage> corpus() {
    return {page("index.html", "Marée", "Use", "Grüße von der See: the tide, 潮汐."),
            page("tide.html", "Tide", "What", "Water that comes and goes."),
            page("g/units.html", "Units", "A tide in feet", "One fathom is two yards.", "2.0"),
            page("g/1.0/units.html", "Units", "A tide in feet", "One fathom or four cubits.", "1.0",
                 false)};
}

TEST(SearchTerms, OfTexts) {
    TestSupport::expect_lines("tests/builder/pages/cases/terms.txt", [](const std::string& text) {
        std::string all;
        TermReader reader(text);
        for (std::string_view term = reader.next(); !term.empty(); term = reader.next())
            all.append(all.empty() ? "" : "|").append(term);
        return all;
    });
}

TEST(SearchIndex, AnswersAsExpected) {
    if (std::system("node --version >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "node is not installed";
    const TestSupport::TempDir folder;
    const auto put = [&](const SiteAsset& asset) {
        fs::create_directories((folder.path() / asset.path).parent_path());
        std::ofstream(folder.path() / asset.path, std::ios::binary) << asset.bytes;
    };
    for (const SiteAsset& file : search_files({search_summary(corpus())}, {}))
        put(file);
    for (const SiteAsset& file : sample_site({}))
        if (file.path.starts_with("assets/"))
            put(file);
    const fs::path cases = fs::path(SOURCE_ROOT) / "tests/builder/pages/cases/answers.txt";
    std::ofstream queries(folder.path() / "queries");
    std::istringstream lines(TestSupport::read_file(cases));
    std::string expected;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("# "))
            continue;
        queries << line.substr(0, line.find(" => ")) << '\n';
        expected += line + "\n";
    }
    queries.close();
    const std::string command = "cd '" + folder.path().string() +
                                "' && node '" SOURCE_ROOT
                                "/tests/builder/pages/ask.mjs' . <queries >answers 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(TestSupport::read_file(folder.path() / "answers"), expected);
}

TEST(SearchIndex, OfTheSamePagesIsTheSame) {
    const auto bytes = [] {
        std::string all;
        for (const SiteAsset& file : search_files({search_summary(corpus())}, {}))
            all += file.path + file.bytes;
        return all;
    };
    EXPECT_EQ(bytes(), bytes());
}

/// Summaries come from files that a disk may have damaged.
TEST(SearchIndex, PassesOverDamagedSummaries) {
    const std::string whole = search_summary(corpus());
    for (std::size_t size = 0; size < whole.size(); size += 9)
        search_files({whole.substr(0, size), whole}, {});
    for (std::size_t at = 0; at < whole.size(); at += 2) {
        std::string damaged = whole;
        damaged[at] = at % 4 == 0 ? '\xff' : '\x7f';
        search_files({damaged}, {});
    }
    EXPECT_EQ(search_files({"not a summary"}, {}).size(), 1u) << "the index alone";
}

/// A query loads a few shards: none may be large, however many pages there are.
TEST(SearchIndex, StaysInSmallPieces) {
    std::vector<std::string> summaries;
    for (int project = 0; project < 150; ++project) {
        std::vector<SearchPage> pages;
        for (int topic = 0; topic < 5; ++topic) {
            std::string text;
            for (int word = 0; word < 400; ++word)
                text += "word" + std::to_string((word * 7 + topic * 13 + project) % 3000) + " ";
            pages.push_back(page("p" + std::to_string(project) + "/" + std::to_string(topic),
                                 "Common title", "Heading", text));
        }
        summaries.push_back(search_summary(pages));
    }
    for (const SiteAsset& file : search_files(summaries, {}))
        EXPECT_LT(file.bytes.size(), 9000u) << file.path;
}

} // namespace
} // namespace Lumenfold::Builder
