#include "builder/repository/declared_versions.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace Lumenfold::Builder {

namespace {

const Json& list_under(const Json& project, const char* key) {
    static const Json none = Json::array();
    const auto found = project.find(key);
    return found != project.end() && found->is_array() ? *found : none;
}

} // namespace

std::vector<DeclaredVersion> declared_versions(const Json& project) {
    std::vector<DeclaredVersion> versions;
    std::set<std::string> seen;
    for (const Json& element : list_under(project, "versions")) {
        DeclaredVersion version = {text_at(element, "label"), text_at(element, "release_date")};
        if (!version.label.empty() && seen.insert(version.label).second)
            versions.push_back(std::move(version));
    }
    return versions;
}

std::set<std::string> excluded_labels(const Json& project) {
    std::set<std::string> labels;
    for (const Json& element : list_under(project, "versions_excluded"))
        if (element.is_string())
            labels.insert(element.get<std::string>());
    return labels;
}

} // namespace Lumenfold::Builder
