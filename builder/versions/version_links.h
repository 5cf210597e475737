#pragma once

#include "builder/documents/link_resolver.h"
#include "builder/report/message.h"
#include "builder/repository/source_tree.h"
#include "builder/versions/make_version.h"
#include "builder/versions/repository_address.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Lumenfold::Builder {

/// Where the links and pictures of a version's documents lead: to its other pages, to its pictures,
/// to the site, to the repository or elsewhere.
class VersionLinks final : public LinkResolver {
public:
    VersionLinks(const SourceTree& tree, const VersionContext& context);

    /// Announces a page, before the first document is read.
    void add_page(const std::string& source, const std::string& page_path);
    /// Begins the document whose links come next.
    void begin_document(const std::string& source, const std::string& page_path);

    LinkTarget link(std::string_view address, std::size_t line) override;
    ImageTarget image(std::string_view address, std::size_t line) override;

    /// The links of the document that was begun last to places on the site.
    std::vector<SiteLink> take_site_links();
    /// The pictures that the documents show, in the order of their paths.
    std::vector<VersionFile> take_files();
    /// Links to anchors of other pages that these do not have.
    Messages missing_anchors(const std::vector<VersionPage>& pages) const;

private:
    struct AnchorLink {
        std::string file;
        std::size_t line;
        std::string page; ///< path of the page that it leads to
        std::string anchor;
    };
    struct Picture {
        std::string bytes;
        ImageTarget target; ///< `src` from the version's first page
    };

    std::string file_name(std::string_view source) const;
    const std::string* page_at(const std::string& source) const;
    LinkTarget site_target(std::string_view path_and_anchor, std::size_t line);
    LinkTarget rooted_target(std::string_view address, std::size_t line);
    LinkTarget relative_target(std::string_view address, std::size_t line);
    LinkTarget page_target(const std::string& page, std::string_view fragment, std::size_t line);
    LinkTarget file_target(const std::string& path, std::string_view fragment, std::size_t line);
    LinkTarget repository_target(const std::string& repository_path, bool is_folder,
                                 std::string_view fragment);
    std::optional<std::string> rooted_file(std::string_view encoded) const;
    ImageTarget relative_picture(std::string_view address);
    ImageTarget rooted_picture(std::string_view address, std::size_t line);
    ImageTarget file_picture(const std::string& path);
    Picture read_picture(const std::string& path);
    std::string missing(const std::string& path);

    const SourceTree& tree_;
    const VersionContext& context_;
    RepositoryAddress repository_;
    std::string prefix_; ///< the source folder in the repository, with its slash
    std::unordered_map<std::string, std::string> pages_; ///< page paths by source
    std::string source_;
    std::string page_;
    std::vector<SiteLink> site_links_;
    std::vector<AnchorLink> anchor_links_;
    std::map<std::string, Picture> pictures_;
    std::size_t missing_files_ = 0;
};

} // namespace Lumenfold::Builder
