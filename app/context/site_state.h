#pragma once

#include "app/context/edit_state.h"
#include "app/context/open_config.h"
#include "app/context/set_state.h"
#include "site/shown_record.h"

#include <map>
#include <string>
#include <vector>

namespace Lumenfold {

/// What the preview of the site's browser tab shows. Written by the fill and by the fields.
struct PreviewState {
    std::string logo_path; ///< absolute; empty if the site has no logo
    std::string logo_height;
    std::string logo_height_mobile;
    std::string tab_text;
};

/// What favicons are generated from. Written by the fill and by the favicon picker.
struct FaviconState {
    std::string source;     ///< absolute path of the image; empty if none
    std::string background; ///< text of the background field
};

struct ProjectTarget {
    std::string path; ///< the lead's file; empty if the family has no lead
    std::string title;
    std::vector<Member> members;
};

struct SocialTarget {
    std::string url;
    std::string label;
    bool external = false;
};

/// What the row ids of the card lists stand for. Cleared and written by every fill.
struct CardTargets {
    std::map<std::string, ProjectTarget> projects;
    std::map<std::string, std::string> orphans; ///< the configuration's reference
    std::map<std::string, SocialTarget> socials;
};

struct SectionTarget {
    ShownRecord shown; ///< in "home.sections"
    bool custom = false;
    std::string title; ///< as the removal question calls it
    std::string label;
    std::string body; ///< reference of a custom section's content
};

/// The state behind the panels of the site configurator.
struct SiteState {
    PreviewState preview;
    FaviconState favicon;
    CardTargets cards;
    std::map<std::string, SectionTarget> sections; ///< by row id; written by every fill
    SetState policies;
    FileEditor section_editor;
};

} // namespace Lumenfold
