#pragma once

#include <filesystem>
#include <string>

namespace Bench {

struct SiteSize {
    int projects = 1000;
    int versions = 3;
    int topics = 5;
};

/// Makes `folder`/site, whose projects have a repository each, with every version tagged and
/// declared, and `folder`/hugo with the same Markdown. The same texts come out each time.
void make_measured_site(const std::filesystem::path& folder, const SiteSize& size);

/// Tags a new patch of a project's newest version, in which one topic is changed.
void change_one_topic(const std::filesystem::path& folder, const SiteSize& size);

} // namespace Bench
