#include "builder/documents/addresses.h"
#include "builder/documents/clean_text.h"
#include "builder/documents/document.h"
#include "builder/documents/escape.h"
#include "builder/documents/html_tree.h"
#include "builder/documents/line_index.h"

#include <algorithm>
#include <cstddef>
#include <gumbo.h>
#include <map>
#include <utility>
#include <vector>

namespace Lumenfold::Builder {
namespace {

/// Parsing may take time that grows with the square of the tags, since unclosed ones nest.
constexpr std::ptrdiff_t MOST_TAGS = 30'000;

bool is_picture(GumboTag tag) {
    return tag == GUMBO_TAG_IMG || tag == GUMBO_TAG_SOURCE || tag == GUMBO_TAG_VIDEO ||
           tag == GUMBO_TAG_AUDIO;
}

class Fragment {
public:
    Fragment(std::string_view html, const DocumentSource& source, LinkResolver& links,
             Messages& messages)
        : html_(html)
        , source_(source)
        , links_(links)
        , messages_(messages)
        , lines_(html) {}

    Document read() {
        if (std::count(html_.begin(), html_.end(), '<') > MOST_TAGS) {
            tell(0, Severity::Complaint,
                 "too many tags to look after its links; they stay as they are: make it shorter");
            document_.html = html_;
            return std::move(document_);
        }
        const HtmlTree tree(html_);
        walk(*tree.root());
        if (!words_.text.empty())
            document_.sections.push_back(std::move(words_));
        document_.html = with_new_addresses();
        return std::move(document_);
    }

private:
    void walk(const GumboNode& root) {
        std::vector<const GumboNode*> waiting = {&root};
        while (!waiting.empty()) {
            const GumboNode& node = *waiting.back();
            waiting.pop_back();
            if (node.type == GUMBO_NODE_TEXT) {
                gather(node.v.text.text);
                continue;
            }
            if (node.type != GUMBO_NODE_ELEMENT && node.type != GUMBO_NODE_TEMPLATE)
                continue;
            const GumboElement& element = node.v.element;
            read_attributes(element);
            if (element.tag == GUMBO_TAG_SCRIPT || element.tag == GUMBO_TAG_STYLE)
                continue;
            for (unsigned int i = element.children.length; i > 0; --i)
                waiting.push_back(static_cast<const GumboNode*>(element.children.data[i - 1]));
        }
    }

    void gather(std::string_view text) {
        for (const char c : text) {
            const bool blank = c == ' ' || c == '\n' || c == '\t' || c == '\r';
            if (!blank)
                words_.text += c;
            else if (!words_.text.empty() && words_.text.back() != ' ')
                words_.text += ' ';
        }
    }

    void read_attributes(const GumboElement& element) {
        for (unsigned int i = 0; i < element.attributes.length; ++i) {
            const auto& attribute = *static_cast<const GumboAttribute*>(element.attributes.data[i]);
            const std::string_view name = attribute.name;
            if (name == "id" || (name == "name" && element.tag == GUMBO_TAG_A))
                document_.anchors.emplace_back(attribute.value);
            else if (name == "src" || name == "poster" ||
                     (name == "href" && element.tag_namespace == GUMBO_NAMESPACE_HTML))
                resolve(attribute, is_picture(element.tag));
        }
    }

    void resolve(const GumboAttribute& attribute, bool picture) {
        const std::string address = trimmed_address(attribute.value);
        const GumboStringPiece& place = attribute.original_value;
        const bool within = place.data >= html_.data() && place.data < html_.data() + html_.size();
        if (address.empty() || address.starts_with('#') || !within)
            return;
        const std::size_t offset = static_cast<std::size_t>(place.data - html_.data());
        if (!changes_.try_emplace(offset, Change{place.length, {}}).second)
            return;
        std::string target =
            picture ? picture_address(address, offset) : link_address(address, offset);
        if (target.empty())
            changes_.erase(offset);
        else
            changes_[offset].address = std::move(target);
    }

    std::string link_address(std::string_view address, std::size_t offset) {
        LinkTarget target = links_.link(address, lines_.line_at(offset));
        tell(offset, Severity::Complaint, std::move(target.problem));
        return std::move(target.href);
    }

    std::string picture_address(std::string_view address, std::size_t offset) {
        ImageTarget target = links_.image(address, lines_.line_at(offset));
        tell(offset, target.advanced ? Severity::Advanced : Severity::Complaint,
             std::move(target.problem));
        return std::move(target.src);
    }

    void tell(std::size_t offset, Severity severity, std::string problem) {
        if (!problem.empty())
            messages_.push_back(
                {severity, source_.file, lines_.line_at(offset), std::move(problem)});
    }

    std::string with_new_addresses() const {
        std::string html;
        std::size_t copied = 0;
        for (const auto& [offset, change] : changes_) {
            html.append(html_, copied, offset - copied);
            html += '"';
            append_url(html, change.address);
            html += '"';
            copied = offset + change.length;
        }
        return html.append(html_, copied);
    }

    struct Change {
        std::size_t length; ///< of the old value with its quotes
        std::string address;
    };

    std::string_view html_;
    const DocumentSource& source_;
    LinkResolver& links_;
    Messages& messages_;
    LineIndex lines_;
    Document document_;
    TextSection words_;
    std::map<std::size_t, Change> changes_; ///< by offset
};

} // namespace

Document render_fragment(std::string_view html, const DocumentSource& source, LinkResolver& links,
                         Messages& messages) {
    const CleanText clean(html);
    tell_invalid(clean, source, messages);
    return Fragment(clean.text(), source, links, messages).read();
}

} // namespace Lumenfold::Builder
