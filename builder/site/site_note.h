#pragma once

#include "builder/report/message.h"
#include "builder/site/project_state.h"
#include "builder/site/site_model.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Lumenfold::Builder {

/// What a build notes of the whole site, so that the next one can tell that nothing changed at all
/// without looking up a single link, and still tell what there is to complain of.
struct SiteNote {
    std::string inputs;             ///< site_sign with these files
    std::vector<std::string> files; ///< what was looked for in the site's folder, found or not
    Messages messages;
    std::size_t pages = 0;
};

std::string write_site_note(const SiteNote& note);
/// Nothing if the bytes are no note that write_site_note made.
std::optional<SiteNote> read_site_note(std::string_view bytes);

/// A sign of everything that the site is made of: the builder itself, the configuration, what its
/// projects show, themes, and `files` of the site's folder.
std::string site_sign(const SiteModel& site, const std::vector<ProjectState>& states,
                      const std::vector<std::string>& files);

} // namespace Lumenfold::Builder
