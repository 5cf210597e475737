#include "builder/pages/search_bytes.h"
#include "builder/pages/search_index.h"
#include "builder/pages/search_term_ids.h"
#include "builder/pages/search_terms.h"

#include <algorithm>
#include <deque>
#include <map>
#include <unordered_map>

namespace Lumenfold::Builder {
namespace {

constexpr std::size_t MAX_VERSIONS = 30;    ///< of one page: bits of a number
constexpr std::size_t MAX_SECTIONS = 60;    ///< that results can lead to, in one page
constexpr std::size_t EXCERPT_BYTES = 2000; ///< of a page's text, for the words around a match
constexpr std::uint32_t USUAL_LENGTH = 400; ///< words of a page

/// The same page in the versions that have it, newest first.
using Versions = std::vector<const SearchPage*>;

/// A page's address without its version: equal for all versions of one page.
std::string common_path(const SearchPage& page) {
    const std::string part = "/" + page.version + "/";
    const std::size_t at = page.version.empty() ? std::string::npos : page.path.find(part);
    std::string path = page.path;
    if (at != std::string::npos)
        path.erase(at, part.size() - 1);
    return path;
}

std::vector<Versions> group_versions(const std::vector<SearchPage>& pages) {
    std::vector<Versions> groups;
    std::map<std::pair<std::string, std::string>, std::size_t> places;
    for (const SearchPage& page : pages) {
        const auto [place, is_new] =
            places.try_emplace({page.project, common_path(page)}, groups.size());
        if (is_new)
            groups.emplace_back();
        if (groups[place->second].size() < MAX_VERSIONS)
            groups[place->second].push_back(&page);
    }
    for (Versions& versions : groups)
        std::stable_partition(versions.begin(), versions.end(),
                              [](const SearchPage* page) { return page->newest; });
    return groups;
}

bool same_content(const SearchPage& a, const SearchPage& b) {
    return a.title == b.title &&
           std::equal(a.sections.begin(), a.sections.end(), b.sections.begin(), b.sections.end(),
                      [](const TextSection& one, const TextSection& other) {
                          return one.text == other.text;
                      }) &&
           std::equal(
               a.headings.begin(), a.headings.end(), b.headings.begin(), b.headings.end(),
               [](const Heading& one, const Heading& other) { return one.text == other.text; });
}

void put_json(std::string& out, std::string_view text) {
    out += '"';
    for (const char c : text) {
        if (c == '"' || c == '\\')
            out += '\\';
        if (static_cast<unsigned char>(c) >= 0x20)
            out += c;
        else if (!out.ends_with(' '))
            out += ' ';
    }
    out += '"';
}

/// The beginning of a text, cut between words.
std::string_view excerpt(std::string_view text, std::size_t bytes) {
    if (text.size() <= bytes)
        return text;
    const std::size_t blank = text.rfind(' ', bytes);
    return text.substr(0, blank == std::string_view::npos ? 0 : blank);
}

void put_sections(std::string& out, const SearchPage& page) {
    std::unordered_map<std::string_view, std::string_view> titles;
    for (const Heading& heading : page.headings)
        titles.emplace(heading.id, heading.text);
    std::size_t left = EXCERPT_BYTES;
    const std::size_t count = std::min(page.sections.size(), MAX_SECTIONS);
    for (std::size_t i = 0; i < count; ++i) {
        const TextSection& section = page.sections[i];
        const std::string_view text = excerpt(section.text, left / (count - i));
        left -= text.size();
        const auto title = titles.find(section.anchor);
        out += i == 0 ? "[" : ",[";
        put_json(out, section.anchor);
        out += ',';
        put_json(out, title == titles.end() ? std::string_view() : title->second);
        out += ',';
        put_json(out, text);
        out += ']';
    }
}

/// `[path, title, project, [[version, path]...], [[anchor, heading, text]...], older]`.
std::string make_record(const Versions& versions) {
    const SearchPage& page = *versions.front();
    std::string record = "[";
    for (const std::string* text : {&page.path, &page.title, &page.project}) {
        put_json(record, *text);
        record += ',';
    }
    record += '[';
    for (const SearchPage* version : versions) {
        record += version == &page ? "[" : ",[";
        put_json(record, version->version);
        record += ',';
        put_json(record, version->path);
        record += ']';
    }
    record += "],[";
    put_sections(record, page);
    return record + (page.newest ? "],0]" : "],1]");
}

/// How often a page says a word, and where most often.
class Count {
public:
    Strength strength;
    std::uint32_t section = 0;
    std::uint32_t page = 0; ///< which page is meant

    void add(std::uint32_t in_section) {
        ++words_;
        note(in_section);
    }

    /// A section is known for a word by its heading rather than by its text.
    void add_heading(std::uint32_t of_section) {
        strength.heading = std::min(3U, strength.heading + 1);
        for (int i = 0; i < HEADING_WORDS; ++i)
            note(of_section);
    }

    /// Each further mention tells less, and in a long page less than in a short one.
    void weigh_body(std::uint32_t length) {
        if (words_ > 0)
            strength.body = std::max(1U, 15 * words_ / (words_ + 1 + length / USUAL_LENGTH));
    }

private:
    static constexpr int HEADING_WORDS = 4;

    void note(std::uint32_t in_section) {
        if (this_section_ != in_section)
            this_words_ = 0;
        this_section_ = in_section;
        if (++this_words_ <= section_words_)
            return;
        section_words_ = this_words_;
        section = in_section;
    }

    std::uint32_t words_ = 0; ///< in the body
    std::uint32_t section_words_ = 0;
    std::uint32_t this_section_ = 0; ///< the one that is being read
    std::uint32_t this_words_ = 0;
};

/// The section that each heading begins; 0 if it has none that results can lead to.
std::vector<std::uint32_t> sections_of_headings(const SearchPage& page) {
    std::unordered_map<std::string_view, std::uint32_t> places;
    for (std::size_t i = 0; i < std::min(page.sections.size(), MAX_SECTIONS); ++i)
        places.emplace(page.sections[i].anchor, static_cast<std::uint32_t>(i));
    std::vector<std::uint32_t> sections;
    for (const Heading& heading : page.headings) {
        const auto place = places.find(heading.id);
        sections.push_back(place == places.end() ? 0 : place->second);
    }
    return sections;
}

/// Counts the words of pages, one page at a time.
class PageReader {
public:
    /// Reads a page. What was counted before is forgotten; the numbers of terms stay.
    void read(const SearchPage& page) {
        ++page_;
        found_.clear();
        const std::uint32_t words = each(page.title, [](Count&) {});
        const unsigned title = words == 1 ? 3 : words <= 3 ? 2 : 1;
        each(page.title, [title](Count& count) { count.strength.title = title; });
        const auto sections = sections_of_headings(page);
        for (std::size_t i = 0; i < page.headings.size(); ++i)
            each(page.headings[i].text,
                 [section = sections[i]](Count& count) { count.add_heading(section); });
        std::uint32_t length = 0;
        for (std::size_t i = 0; i < page.sections.size(); ++i) {
            const auto section = static_cast<std::uint32_t>(i < MAX_SECTIONS ? i : 0);
            length += each(page.sections[i].text, [section](Count& count) { count.add(section); });
        }
        for (const std::uint32_t term : found_)
            counts_[term].weigh_body(length);
    }

    /// The page's terms, each once.
    const std::vector<std::uint32_t>& found() const { return found_; }
    const Count& count(std::uint32_t term) const { return counts_[term]; }
    const std::vector<std::string_view>& terms() const { return ids_.terms(); }

private:
    template <typename Note>
    std::uint32_t each(std::string_view text, const Note& note) {
        std::uint32_t words = 0;
        TermReader reader(text);
        for (std::string_view term = reader.next(); !term.empty(); term = reader.next()) {
            note(count_of(term));
            ++words;
        }
        return words;
    }

    Count& count_of(std::string_view term) {
        const std::uint32_t id = ids_.id(term, [this](std::string_view text) {
            return std::string_view(kept_.emplace_back(text));
        });
        if (id >= counts_.size())
            counts_.resize(id + 1);
        if (counts_[id].page != page_) {
            counts_[id] = {};
            counts_[id].page = page_;
            found_.push_back(id);
        }
        return counts_[id];
    }

    TermIds ids_;
    std::deque<std::string> kept_;
    std::vector<Count> counts_; ///< by term; one of another page counts as none
    std::vector<std::uint32_t> found_;
    std::uint32_t page_ = 0;
};

/// A term in an entry.
struct Use {
    std::uint32_t entry = 0;
    std::uint32_t versions = 0;
    std::uint32_t section = 0;
    Strength strength;
};

/// The words of all entries.
class TermTable {
public:
    void add_entry(const Versions& versions) {
        std::uint32_t done = 0;
        for (std::size_t i = 0; i < versions.size(); ++i) {
            std::uint32_t same = 0;
            for (std::size_t j = i; j < versions.size(); ++j)
                if (same_content(*versions[i], *versions[j]))
                    same |= 1U << j;
            if ((done & same) == 0) {
                reader_.read(*versions[i]);
                merge(same, i == 0);
            }
            done |= same;
        }
        all_versions_.push_back(done);
    }

    void write(std::string& out) const {
        put_number(out, static_cast<std::uint32_t>(uses_.size()));
        std::string bytes;
        for (std::size_t term = 0; term < uses_.size(); ++term) {
            bytes.clear();
            for (const Use& use : uses_[term]) {
                const bool everywhere = use.versions == all_versions_[use.entry];
                put_number(bytes, use.entry);
                put_number(bytes, use.strength.packed());
                put_number(bytes, use.section);
                put_number(bytes, everywhere ? 0 : use.versions);
            }
            put_text(out, reader_.terms()[term]);
            put_number(out, static_cast<std::uint32_t>(uses_[term].size()));
            put_text(out, bytes);
        }
    }

private:
    /// Adds what the page just read says and no newer version did; `shown`: results show it.
    void merge(std::uint32_t versions, bool shown) {
        const auto entry = static_cast<std::uint32_t>(all_versions_.size());
        uses_.resize(reader_.terms().size());
        for (const std::uint32_t term : reader_.found()) {
            std::vector<Use>& uses = uses_[term];
            const Count& count = reader_.count(term);
            if (uses.empty() || uses.back().entry != entry)
                uses.push_back({entry, 0, shown ? count.section : 0, count.strength});
            uses.back().versions |= versions;
        }
    }

    PageReader reader_;
    std::vector<std::vector<Use>> uses_;      ///< by term
    std::vector<std::uint32_t> all_versions_; ///< by entry
};

} // namespace

std::string search_summary(const std::vector<SearchPage>& pages) {
    std::string summary;
    put_number(summary, SEARCH_FORMAT);
    const std::vector<Versions> groups = group_versions(pages);
    put_number(summary, static_cast<std::uint32_t>(groups.size()));
    TermTable table;
    for (const Versions& versions : groups) {
        put_text(summary, make_record(versions));
        table.add_entry(versions);
    }
    table.write(summary);
    return summary;
}

} // namespace Lumenfold::Builder
