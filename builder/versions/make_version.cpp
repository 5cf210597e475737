#include "builder/versions/make_version.h"

#include "builder/documents/document.h"
#include "builder/versions/manifest.h"
#include "builder/versions/source_paths.h"
#include "builder/versions/version_links.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace Lumenfold::Builder {
namespace {

class VersionMaker {
public:
    VersionMaker(const SourceTree& tree, const VersionContext& context, Messages& messages)
        : tree_(tree)
        , context_(context)
        , messages_(messages)
        , links_(tree, context) {}

    StoredVersion make(const Manifest& manifest) {
        StoredVersion version{context_.label, context_.tag, context_.commit, context_.date, {}, {}};
        list_pages(manifest, version.pages);
        for (const VersionPage& page : version.pages)
            if (!page.source.empty())
                links_.add_page(page.source, page.path);
        const std::size_t first_message = messages_.size();
        for (VersionPage& page : version.pages)
            fill(page);
        tell_missing_anchors(version.pages, first_message);
        version.files = links_.take_files();
        return version;
    }

private:
    static void list_pages(const Manifest& manifest, std::vector<VersionPage>& pages) {
        VersionPage readme;
        readme.path = "index.html";
        readme.source = manifest.readme;
        pages.push_back(std::move(readme));
        for (const ManifestTopic& topic : manifest.topics) {
            VersionPage page;
            page.path = "topics/" + topic.slug + ".html";
            page.title = topic.title.empty() ? topic.label : topic.title;
            page.label = topic.label;
            page.intro = topic.intro;
            page.source = topic.source;
            pages.push_back(std::move(page));
        }
        if (manifest.license.empty())
            return;
        VersionPage license;
        license.path = "license.html";
        license.source = manifest.license;
        pages.push_back(std::move(license));
    }

    void fill(VersionPage& page) {
        Document document = render(page);
        if (page.title.empty())
            page.title = document.title.empty() ? other_title(page) : document.title;
        if (page.label.empty() && page.path.starts_with("topics/"))
            page.label = page.title;
        page.headings = std::move(document.headings);
        page.anchors = std::move(document.anchors);
        page.sections = std::move(document.sections);
        page.html = std::move(document.html);
        page.site_links = links_.take_site_links();
    }

    /// The title of a page that neither manifest nor document name.
    std::string other_title(const VersionPage& page) const {
        if (page.path == "index.html")
            return context_.project;
        const std::string_view name = file_name_of(page.path);
        std::string words(name.substr(0, name.rfind('.')));
        std::replace(words.begin(), words.end(), '-', ' ');
        words.front() = words.front() >= 'a' && words.front() <= 'z'
                            ? static_cast<char>(words.front() - 'a' + 'A')
                            : words.front();
        return words;
    }

    Document render(const VersionPage& page) {
        if (page.source.empty())
            return {};
        const DocumentSource source{
            context_.source_name.empty() ? page.source : context_.source_name + "/" + page.source,
            true};
        const std::optional<std::string> text = tree_.read(page.source);
        if (!text) {
            messages_.push_back({Severity::Complaint, source.file, 0, "the file cannot be read"});
            return {};
        }
        links_.begin_document(page.source, page.path);
        return is_markdown(page.source) ? render_markdown(*text, source, links_, messages_)
                                        : render_plain_text(*text, source, messages_);
    }

    /// They can be told at the end only, and are put where the document's other messages stand.
    void tell_missing_anchors(const std::vector<VersionPage>& pages, std::size_t first_message) {
        std::unordered_map<std::string, std::size_t> order;
        for (const VersionPage& page : pages)
            order.try_emplace(file_name(page.source), order.size());
        for (Message& message : links_.missing_anchors(pages))
            messages_.push_back(std::move(message));
        std::stable_sort(messages_.begin() + static_cast<std::ptrdiff_t>(first_message),
                         messages_.end(), [&](const Message& a, const Message& b) {
                             return std::pair(order[a.file], a.line) <
                                    std::pair(order[b.file], b.line);
                         });
    }

    std::string file_name(const std::string& source) const {
        return context_.source_name.empty() ? source : context_.source_name + "/" + source;
    }

    const SourceTree& tree_;
    const VersionContext& context_;
    Messages& messages_;
    VersionLinks links_;
};

} // namespace

std::optional<StoredVersion> make_version(const SourceTree& tree, const VersionContext& context,
                                          Messages& messages) {
    const std::optional<Manifest> manifest = read_manifest(tree, context.source_name, messages);
    if (!manifest)
        return std::nullopt;
    StoredVersion version = VersionMaker(tree, context, messages).make(*manifest);
    for (VersionPage& page : version.pages)
        if (!page.source.empty())
            page.source.insert(0, tree.prefix());
    return version;
}

} // namespace Lumenfold::Builder
