#pragma once

#include "builder/site/site_context.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// Takes a finished file of the site.
using FileWriter = std::function<void(std::string_view path, std::string_view bytes)>;

/// What a project's pages show besides documents and versions. What its configuration refers to in
/// vain goes to `messages`.
ProjectView project_view(const SiteContext& context, std::size_t project, Messages& messages);

/// The paths of all files that make_project_pages writes.
std::vector<std::string> project_paths(const SiteContext& context, std::size_t project);

/// Adds to a project's sign what its pages show of other projects.
std::string project_sign(const SiteContext& context, std::size_t project,
                         std::string_view chrome_sign);

/// Makes all pages of a project and passes on the files they use. `view` comes from project_view.
/// Work of different projects may go on side by side.
void make_project_pages(const SiteContext& context, const Chrome& chrome, std::size_t project,
                        const ProjectView& view, const FileWriter& write);

} // namespace Lumenfold::Builder
