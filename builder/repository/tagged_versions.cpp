#include "builder/repository/tagged_versions.h"

#include "builder/repository/odd_tags.h"
#include "builder/repository/tag_date.h"
#include "builder/repository/version_tag.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

namespace Lumenfold::Builder {

namespace {

/// A tag whose name is a version's.
struct Candidate {
    VersionTag version;
    const std::string* name;
};

using Candidates = std::vector<Candidate>;
using Position = Candidates::const_iterator;

GitObject target_of(git_repository* repository, const std::string& tag) {
    git_oid oid;
    git_object* object = nullptr;
    if (git_reference_name_to_id(&oid, repository, ("refs/tags/" + tag).c_str()) == 0)
        git_object_lookup(&object, repository, &oid, GIT_OBJECT_ANY);
    return GitObject(object);
}

/// What a tag means; nothing if it leads to no commit.
std::optional<TaggedVersion> resolve(git_repository* repository, const Candidate& candidate) {
    const GitObject target = target_of(repository, *candidate.name);
    git_object* raw = nullptr;
    if (!target || git_object_peel(&raw, target.get(), GIT_OBJECT_COMMIT) != 0)
        return std::nullopt;
    const GitObject commit(raw);
    return TaggedVersion{candidate.version.label(), *candidate.name, hex_of(*git_object_id(raw)),
                         tag_date(*target, *commit)};
}

/// Tells of the other name of a chosen version, if it means something else.
void compare_twin(git_repository* repository, const TaggedVersion& chosen, const Candidate& twin,
                  OddTags& odd) {
    const std::optional<TaggedVersion> other = resolve(repository, twin);
    if (!other || other->commit != chosen.commit)
        odd.add_twins(chosen.tag, *twin.name);
}

/// The first of one label's tags that leads to a commit.
std::optional<TaggedVersion> choose(git_repository* repository, Position first, Position last,
                                    OddTags& odd) {
    for (Position at = first; at != last; ++at) {
        std::optional<TaggedVersion> chosen = resolve(repository, *at);
        if (!chosen) {
            odd.add_without_commit(*at->name);
            continue;
        }
        const Position next = at + 1;
        if (next != last && next->version.patch == at->version.patch)
            compare_twin(repository, *chosen, *next, odd);
        return chosen;
    }
    return std::nullopt;
}

/// A tag "1.2" or "v1.2" that moves along with the patches of its version is there on purpose.
bool is_series(std::string_view name, const std::set<std::string, std::less<>>& labels) {
    return labels.contains(name.starts_with('v') ? name.substr(1) : name);
}

} // namespace

std::vector<TaggedVersion> tagged_versions(git_repository* repository,
                                           const std::vector<std::string>& names,
                                           std::vector<std::string>& oddities) {
    Candidates candidates;
    std::vector<std::string_view> lookalikes;
    for (const std::string& name : names)
        if (const std::optional<VersionTag> version = parse_version_tag(name))
            candidates.push_back({*version, &name});
        else if (looks_like_version(name))
            lookalikes.push_back(name);
    std::sort(candidates.begin(), candidates.end(), [](const Candidate& a, const Candidate& b) {
        return comes_before(a.version, b.version);
    });

    OddTags odd;
    std::vector<TaggedVersion> versions;
    std::set<std::string, std::less<>> labels;
    for (Position first = candidates.begin(); first != candidates.end();) {
        const std::string label = first->version.label();
        const Position last = std::find_if(first, candidates.cend(), [&](const Candidate& other) {
            return other.version.label() != label;
        });
        labels.insert(label);
        if (std::optional<TaggedVersion> version = choose(repository, first, last, odd))
            versions.push_back(std::move(*version));
        first = last;
    }
    for (const std::string_view name : lookalikes)
        if (!is_series(name, labels))
            odd.add_lookalike(std::string(name));
    oddities = odd.sentences();
    return versions;
}

} // namespace Lumenfold::Builder
