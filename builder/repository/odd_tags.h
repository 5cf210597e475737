#pragma once

#include <string>
#include <vector>

namespace Lumenfold::Builder {

/// Tags of which a person should hear, gathered into few sentences: a repository may have thousands
/// of them.
class OddTags {
public:
    /// One that looks like a version and is none.
    void add_lookalike(const std::string& tag) { lookalikes_.push_back(tag); }
    /// A version's tag that leads to a file, a folder, or a commit that is missing.
    void add_without_commit(const std::string& tag) { without_commit_.push_back(tag); }
    /// Two names of one version that mean different commits.
    void add_twins(const std::string& taken, const std::string& other);

    /// What is to be said, the same for the same tags.
    std::vector<std::string> sentences() const;

private:
    std::vector<std::string> lookalikes_;
    std::vector<std::string> without_commit_;
    std::vector<std::string> twins_;
};

} // namespace Lumenfold::Builder
