#include "builder/documents/memory_tree.h"
#include "builder/documents/shown.h"
#include "builder/versions/make_version.h"
#include "builder/versions/repository_address.h"
#include "support/case_file.h"

#include <gtest/gtest.h>

#include <string>

namespace Lumenfold::Builder {
namespace {

const std::string CASES = "tests/builder/documents/cases/";

/// The pages of a version from a script (see MemoryTree), with ROOT_MARK shown as "ROOT/".
std::string version_of(const std::string& script) {
    const MemoryTree tree(script);
    VersionContext context;
    context.project = "Gauge";
    context.source_name = "sources/gauge";
    context.site_url = "https://tide.example/";
    context.repo_url =
        script.find("@offline") == std::string::npos ? "https://git.example/gauge" : "";
    context.label = "3.2";
    context.tag = "3.2.1";
    Messages messages;
    const auto version = make_version(tree, context, messages);
    std::string text;
    if (version) {
        for (const VersionPage& page : version->pages) {
            text += page.path + " " + page.title;
            text += page.label.empty() ? "" : " (" + page.label + ")";
            text += page.intro.empty() ? "" : ": " + page.intro;
            text += "\n" + page.html;
            for (const SiteLink& link : page.site_links)
                text += "site " + link.address + " " + link.file + ":" + std::to_string(link.line) +
                        "\n";
        }
        for (const VersionFile& file : version->files)
            text += "file " + file.path + "\n";
    }
    for (std::size_t at = 0; (at = text.find(ROOT_MARK, at)) != std::string::npos;)
        text.replace(at, 1, "ROOT/");
    return text + shown(messages, true);
}

TEST(MakeVersion, GoesAsWritten) {
    TestSupport::expect_cases(CASES + "version.txt", version_of);
    TestSupport::expect_cases(CASES + "manifest.txt", version_of);
}

TEST(RepositoryAddress, HasTheShapeOfThePlatform) {
    TestSupport::expect_lines(CASES + "repository_addresses.txt", [](const std::string& line) {
        std::istringstream words(line);
        std::string platform;
        std::string url;
        std::string path;
        words >> platform >> url >> path;
        const bool is_folder = path.ends_with('/');
        if (is_folder)
            path.pop_back();
        return repository_address({url, platform == "-" ? "" : platform, "v1.0.0"}, path,
                                  is_folder);
    });
}

} // namespace
} // namespace Lumenfold::Builder
