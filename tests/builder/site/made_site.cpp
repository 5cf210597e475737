#include "builder/site/made_site.h"

#include "support/temp_dir.h"

#include <algorithm>
#include <gumbo.h>
#include <memory>

namespace TestSupport {

namespace fs = std::filesystem;

namespace {

struct OutputDeleter {
    void operator()(GumboOutput* output) const {
        gumbo_destroy_output(&kGumboDefaultOptions, output);
    }
};

std::string attribute(const GumboElement& element, const char* name) {
    const GumboAttribute* found = gumbo_get_attribute(&element.attributes, name);
    return found ? found->value : std::string();
}

bool leads_elsewhere(const std::string& address) {
    const std::size_t colon = address.find(':');
    return address.starts_with("//") ||
           (colon != address.npos && colon < address.find_first_of("/?#"));
}

std::string unescaped(const std::string& address) {
    std::string path;
    for (std::size_t i = 0; i < address.size(); ++i)
        if (address[i] == '%' && i + 2 < address.size()) {
            path += static_cast<char>(std::stoi(address.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else {
            path += address[i];
        }
    return path;
}

} // namespace

/// Gathers what matters of one page.
class PageReader {
public:
    explicit PageReader(MadeSite::Page& page)
        : page_(page) {}

    void read(const std::string& html) {
        const std::unique_ptr<GumboOutput, OutputDeleter> output(
            gumbo_parse_with_options(&kGumboDefaultOptions, html.data(), html.size()));
        if (output->errors.length > 0)
            page_.problems.push_back(std::to_string(output->errors.length) + " errors of HTML");
        read(*output->root);
    }

private:
    void read(const GumboNode& node) {
        if (node.type != GUMBO_NODE_ELEMENT && node.type != GUMBO_NODE_TEMPLATE)
            return;
        read(node.v.element);
        for (unsigned i = 0; i < node.v.element.children.length; ++i)
            read(*static_cast<const GumboNode*>(node.v.element.children.data[i]));
    }

    void read(const GumboElement& element) {
        const std::string id = attribute(element, "id");
        if (!id.empty() && !page_.anchors.insert(id).second)
            page_.problems.push_back("two elements have the id " + id);
        if (element.tag == GUMBO_TAG_IMG && !gumbo_get_attribute(&element.attributes, "alt"))
            page_.problems.push_back("a picture has no words: " + attribute(element, "src"));
        const std::string name = gumbo_normalized_tagname(element.tag);
        const std::string rel = attribute(element, "rel");
        const bool is_link = element.tag == GUMBO_TAG_A || rel == "canonical";
        for (const char* key : {"href", "src", "action", "poster"})
            if (gumbo_get_attribute(&element.attributes, key))
                page_.references.push_back({name, attribute(element, key), !is_link});
    }

    MadeSite::Page& page_;
};

MadeSite::MadeSite(const fs::path& folder)
    : folder_(folder) {
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.path().extension() == ".html") {
            const std::string path = entry.path().lexically_relative(folder).generic_string();
            PageReader(pages_[path]).read(read_file(entry.path()));
        }
}

std::vector<std::string> MadeSite::problems() const {
    std::vector<std::string> problems;
    for (const auto& [path, page] : pages_) {
        for (const std::string& problem : page.problems)
            problems.push_back(path + ": " + problem);
        for (const Reference& reference : page.references)
            if (const std::string problem = problem_of(path, reference); !problem.empty())
                problems.push_back(path + ": <" + reference.element + "> " + reference.address +
                                   ": " + problem);
    }
    return problems;
}

std::string MadeSite::problem_of(const std::string& path, const Reference& reference) const {
    if (!leads_elsewhere(reference.address))
        return problem_of_way(path, reference.address);
    return reference.is_request ? "is a request to somebody else" : "";
}

std::string MadeSite::problem_of_way(const std::string& path, const std::string& address) const {
    const std::size_t hash = std::min(address.find('#'), address.size());
    const std::string way = unescaped(address.substr(0, std::min(address.find('?'), hash)));
    // A server shows this page at any address, so its links cannot start from there.
    const bool from_root = path == "404.html" && way.starts_with('/');
    if (way.starts_with('/') && !from_root)
        return "breaks where the site lies below another path";
    const fs::path target = way.empty() ? fs::path(path)
                            : from_root ? fs::path(way.substr(1))
                                        : (fs::path(path).parent_path() / way).lexically_normal();
    if (!fs::is_regular_file(folder_ / target))
        return "leads nowhere";
    const std::string anchor = unescaped(address.substr(std::min(hash + 1, address.size())));
    const auto page = pages_.find(target.generic_string());
    if (!anchor.empty() && (page == pages_.end() || !page->second.anchors.contains(anchor)))
        return "has no such anchor";
    return {};
}

} // namespace TestSupport
