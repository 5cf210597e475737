#pragma once

#include "site/config_files.h"
#include "site/project_groups.h"

#include <filesystem>
#include <string>
#include <vector>

namespace Lumenfold {

/// One configuration of a project: the project itself, or one entry of a project family.
struct Member {
    std::string path;      ///< the member's configuration file
    std::string label;     ///< shown on the family bar
    bool umbrella = false; ///< the family's overview
    std::string logo;      ///< resolved path; may be empty
    std::string tagline;
};

/// A configuration opened in a tab.
struct OpenConfig {
    std::string id;                        ///< of its tab, never used again
    std::string path;                      ///< the file, absolute; for a family the lead's file
    std::string title;                     ///< shown on the tab
    ConfigKind kind = ConfigKind::Unknown; ///< Unknown: unset
    std::vector<Member> members;           ///< none for a site, two or more for a family
    std::string logo;                      ///< shown on the tab; may be empty
    bool from_registry = false; ///< a project whose members are those of the site's registry
};

/// A member of which the configuration in `file` says `info`.
Member make_member(const std::filesystem::path& file, const ProjectInfo& info, bool umbrella);

/// The same, read from its file.
Member read_member(const std::filesystem::path& file, bool umbrella);

/// The members of a project as a site's registry lists them.
std::vector<Member> members_of(const ProjectGroup& group);

/// The same of the project of which `file` is a configuration, from the registry of the site above
/// it; none if there is no such entry.
std::vector<Member> registered_members(const std::filesystem::path& file);

/// The file of the logo that a site's configuration names; empty if there is none.
std::string read_site_logo(const std::filesystem::path& file);

/// The member that stands for a project: the umbrella, wherever the registry lists it, or the
/// first. Null without members. Valid while `members` stays as it is.
const Member* lead_member(const std::vector<Member>& members);

/// The logo that a project's tab shows: its lead's.
std::string members_logo(const std::vector<Member>& members);

} // namespace Lumenfold
