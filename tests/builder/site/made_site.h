#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace TestSupport {

/// A website in a folder, as its readers' browsers meet it.
class MadeSite {
public:
    /// Reads and parses all pages of the folder.
    explicit MadeSite(const std::filesystem::path& folder);

    std::size_t page_count() const { return pages_.size(); }

    /// What is wrong with the site, a sentence each: HTML that is none, identifiers that are given
    /// twice, pictures without words, links to nothing, requests to anybody else.
    std::vector<std::string> problems() const;

private:
    struct Reference {
        std::string element;
        std::string address;
        bool is_request; ///< a browser asks for it by itself
    };
    struct Page {
        std::set<std::string> anchors;
        std::vector<Reference> references;
        std::vector<std::string> problems;
    };
    friend class PageReader;

    std::string problem_of(const std::string& path, const Reference& reference) const;
    std::string problem_of_way(const std::string& path, const std::string& address) const;

    std::filesystem::path folder_;
    std::map<std::string, Page> pages_;
};

} // namespace TestSupport
