#include "app/context/open_config.h"

#include "app/context/json_view.h"
#include "site/path_text.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace Lumenfold {

Member make_member(const std::filesystem::path& file, const ProjectInfo& info, bool umbrella) {
    Member member;
    member.path = path_to_utf8(file);
    member.umbrella = umbrella;
    member.label = info.family_label.empty() ? info.name : info.family_label;
    if (umbrella)
        member.label = "Overview";
    member.logo = path_to_utf8(resolve_project_logo(file.parent_path(), info.logo));
    member.tagline = info.tagline;
    return member;
}

Member read_member(const std::filesystem::path& file, bool umbrella) {
    return make_member(file, read_project_info(path_to_utf8(file), file.parent_path()), umbrella);
}

std::vector<Member> members_of(const ProjectGroup& group) {
    std::vector<Member> members;
    for (const RegisteredProject& entry : group.entries)
        members.push_back(make_member(entry.file, entry.info,
                                      &entry == group.lead() && group.entries.size() > 1));
    return members;
}

std::vector<Member> registered_members(const std::filesystem::path& file) {
    const std::filesystem::path site = find_site_above(file.parent_path());
    const Json json = read_json_file(site / SITE_FILE_NAME).value_or(Json());
    const std::filesystem::path own = comparable_path(file);
    for (const ProjectGroup& group : group_projects(registered_files(json, site)))
        if (std::any_of(group.entries.begin(), group.entries.end(),
                        [&](const RegisteredProject& entry) { return entry.file == own; }))
            return members_of(group);
    return {};
}

std::string read_site_logo(const std::filesystem::path& file) {
    const Json site = read_json_file(file).value_or(Json());
    return path_to_utf8(
        resolve_image(file.parent_path(), text_at(member_at(site, "branding"), "logo_path")));
}

const Member* lead_member(const std::vector<Member>& members) {
    const auto umbrella = std::find_if(members.begin(), members.end(),
                                       [](const Member& member) { return member.umbrella; });
    if (umbrella != members.end())
        return &*umbrella;
    return members.empty() ? nullptr : &members.front();
}

std::string members_logo(const std::vector<Member>& members) {
    const Member* lead = lead_member(members);
    return lead ? lead->logo : std::string();
}

} // namespace Lumenfold
