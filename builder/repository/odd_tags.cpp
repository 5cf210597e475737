#include "builder/repository/odd_tags.h"

#include <algorithm>
#include <cstddef>

namespace Lumenfold::Builder {

namespace {

constexpr std::size_t NAMES_SHOWN = 5;

/// "The tag a is no version", "The tags a, b and c are no versions", "The tags a, b, c, d, e and 9
/// more are no versions".
std::string no_versions(std::vector<std::string> tags) {
    if (tags.size() == 1)
        return "The tag " + tags.front() + " is no version";
    std::sort(tags.begin(), tags.end());
    const std::size_t all = tags.size();
    if (all > NAMES_SHOWN + 1) {
        tags.resize(NAMES_SHOWN);
        tags.push_back(std::to_string(all - NAMES_SHOWN) + " more");
    }
    std::string text = "The tags " + tags.front();
    for (std::size_t i = 1; i < tags.size(); ++i)
        text += (i + 1 < tags.size() ? ", " : " and ") + tags[i];
    return text + " are no versions";
}

} // namespace

void OddTags::add_twins(const std::string& taken, const std::string& other) {
    twins_.push_back("The tags " + taken + " and " + other +
                     " name one version and mean different commits: " + taken +
                     " is taken. Delete one of them.");
}

std::vector<std::string> OddTags::sentences() const {
    std::vector<std::string> sentences;
    if (!lookalikes_.empty())
        sentences.push_back(no_versions(lookalikes_) +
                            ": versions are tagged X.Y.Z or vX.Y.Z, without leading zeros.");
    if (!without_commit_.empty())
        sentences.push_back(no_versions(without_commit_) +
                            ": no commit of this repository is tagged.");
    sentences.insert(sentences.end(), twins_.begin(), twins_.end());
    return sentences;
}

} // namespace Lumenfold::Builder
