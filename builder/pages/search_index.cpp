#include "builder/pages/search_index.h"

#include "builder/pages/search_bytes.h"
#include "builder/pages/search_shards.h"
#include "builder/pages/search_term_ids.h"
#include "builder/pages/search_terms.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <span>

namespace Lumenfold::Builder {
namespace {

constexpr std::size_t MAX_USES = 150;       ///< of one term: the strongest
constexpr std::size_t MAX_PREFIX_USES = 30; ///< of a beginning of one or two letters
constexpr std::size_t FEWEST_USE_BYTES = 4; ///< so that a damaged number cannot ask for more
constexpr double STRONGEST = 63;
constexpr double OLDER = 0.5; ///< what a match counts that only older versions have

struct Use {
    std::uint32_t entry = 0;
    std::uint32_t versions = 0;
    std::uint16_t section = 0;
    std::uint16_t impact = 0;
};

/// The impact of each packed strength.
std::array<std::uint16_t, 256> impact_table(const SearchWeights& weights) {
    const double whole = weights.title + weights.heading + weights.body;
    std::array<std::uint16_t, 256> table{};
    for (unsigned packed = 0; packed < table.size(); ++packed) {
        const Strength strength = Strength::unpacked(packed);
        const double value = weights.title * strength.title / 3 +
                             weights.heading * strength.heading / 3 +
                             weights.body * strength.body / 15;
        const double share = whole > 0 ? std::clamp(value / whole, 0., 1.) : 0;
        table[packed] = static_cast<std::uint16_t>(1 + share * STRONGEST);
    }
    return table;
}

/// Merges summaries: records into files, terms into one sorted table.
class IndexBuilder {
public:
    IndexBuilder(const std::vector<std::string>& summaries, const SearchWeights& weights)
        : summaries_(summaries)
        , impacts_(impact_table(weights)) {}

    std::vector<SiteAsset> build() {
        for (const std::string& summary : summaries_)
            number_terms(summary);
        lay_out();
        for (const std::string& summary : summaries_)
            place_uses(summary);
        records_.finish();
        write_terms();
        return std::move(files_);
    }

private:
    /// Calls `each_record(bytes)` and `each_term(text, number of uses, bytes of uses)`.
    template <typename EachRecord, typename EachTerm>
    static void walk(const std::string& summary, const EachRecord& each_record,
                     const EachTerm& each_term) {
        SearchBytes bytes(summary);
        if (bytes.number() != SEARCH_FORMAT)
            return;
        for (std::uint32_t count = bytes.number(); count > 0 && !bytes.failed(); --count)
            each_record(bytes.text());
        for (std::uint32_t count = bytes.number(); count > 0 && !bytes.failed(); --count) {
            const std::string_view term = bytes.text();
            const std::size_t uses = bytes.number();
            const std::string_view use_bytes = bytes.text();
            each_term(term, std::min(uses, use_bytes.size() / FEWEST_USE_BYTES), use_bytes);
        }
    }

    void number_terms(const std::string& summary) {
        walk(
            summary, [](std::string_view) {},
            [this](std::string_view term, std::size_t uses, std::string_view) {
                const std::uint32_t id = ids_.id(term, [](std::string_view text) { return text; });
                if (id == ends_.size())
                    ends_.push_back(0);
                term_ids_.push_back(id);
                ends_[id] += static_cast<std::uint32_t>(uses);
            });
    }

    /// Makes room for the uses of each term, one term's beside each other.
    void lay_out() {
        std::uint32_t begin = 0;
        for (std::uint32_t& end : ends_) {
            const std::uint32_t count = end;
            end = begin;
            begin += count;
        }
        uses_.resize(begin);
    }

    void place_uses(const std::string& summary) {
        entries_.clear();
        walk(
            summary, [this](std::string_view record) { entries_.push_back(records_.add(record)); },
            [this](std::string_view, std::size_t uses, std::string_view use_bytes) {
                std::uint32_t& end = ends_[term_ids_[next_term_++]];
                SearchBytes bytes(use_bytes);
                for (; uses > 0; --uses)
                    uses_[end++] = read_use(bytes);
            });
    }

    Use read_use(SearchBytes& bytes) const {
        Use use;
        const std::uint32_t entry = bytes.number();
        use.entry = entry < entries_.size() ? entries_[entry] : 0;
        use.impact = impacts_.at(bytes.number() & 0xff);
        use.section = static_cast<std::uint16_t>(bytes.number());
        use.versions = bytes.number();
        if (use.versions != 0 && (use.versions & 1) == 0)
            use.impact = static_cast<std::uint16_t>(std::max(1., use.impact * OLDER));
        return use;
    }

    void write_terms() {
        const std::vector<std::string_view>& terms = ids_.terms();
        std::vector<std::uint32_t> sorted(terms.size());
        std::iota(sorted.begin(), sorted.end(), 0U);
        std::sort(sorted.begin(), sorted.end(),
                  [&terms](std::uint32_t a, std::uint32_t b) { return terms[a] < terms[b]; });
        TermShards shards("search/t", files_);
        std::vector<std::string> backwards;
        backwards.reserve(sorted.size());
        // "*" comes before all letters and digits.
        for (std::size_t i = 0; i < sorted.size(); ++i)
            for (const std::size_t letters : {1U, 2U})
                write_prefix(sorted, i, letters, shards);
        for (std::size_t i = 0; i < sorted.size(); ++i) {
            shards.add(terms[sorted[i]], encoded(uses_of(sorted[i]), MAX_USES));
            backwards.push_back(reversed(terms[sorted[i]]));
        }
        const std::string starts = shards.finish();
        std::sort(backwards.begin(), backwards.end());
        TermShards mirror("search/r", files_);
        for (const std::string& term : backwards)
            mirror.add(term, {});
        files_.push_back(
            {"search/index.js", index_script(records_.count(), starts, mirror.finish())});
        records_.append_to(files_);
    }

    std::span<Use> uses_of(std::uint32_t id) {
        const std::uint32_t begin = id == 0 ? 0 : ends_[id - 1];
        return std::span(uses_).subspan(begin, ends_[id] - begin);
    }

    /// At the first term that begins with one or two new letters: the strongest pages of all terms
    /// that do, as "*" and the letters, for the shards of so short a beginning would be too many to
    /// load.
    void write_prefix(const std::vector<std::uint32_t>& sorted, std::size_t at, std::size_t letters,
                      TermShards& shards) {
        const std::vector<std::string_view>& terms = ids_.terms();
        const std::string_view prefix = first_letters(terms[sorted[at]], letters);
        if (prefix.empty() || (at > 0 && terms[sorted[at - 1]].starts_with(prefix)))
            return;
        best_.assign(records_.numbers(), {});
        for (std::size_t i = at; i < sorted.size() && terms[sorted[i]].starts_with(prefix); ++i)
            for (const Use& use : uses_of(sorted[i]))
                if (use.impact > best_[use.entry].impact)
                    best_[use.entry] = use;
        std::erase_if(best_, [](const Use& use) { return use.impact == 0; });
        shards.add("*" + std::string(prefix), encoded(best_, MAX_PREFIX_USES));
    }

    static std::string_view first_letters(std::string_view term, std::size_t letters) {
        std::size_t at = 0;
        for (; letters > 0 && at < term.size(); --letters)
            for (++at; at < term.size() && (static_cast<unsigned char>(term[at]) & 0xc0) == 0x80;)
                ++at;
        return letters > 0 ? std::string_view() : term.substr(0, at);
    }

    /// The strongest uses, in the order of entries; "!" and the number of all if some are left out.
    /// Changes the order of `uses`.
    static std::string encoded(std::span<Use> uses, std::size_t most) {
        std::string text;
        if (uses.size() > most) {
            text = "!";
            put_digits(text, static_cast<std::uint32_t>(uses.size()));
            const auto stronger = [](const Use& a, const Use& b) {
                return a.impact != b.impact ? a.impact > b.impact : a.entry < b.entry;
            };
            std::nth_element(uses.begin(), uses.begin() + static_cast<std::ptrdiff_t>(most),
                             uses.end(), stronger);
            uses = uses.first(most);
        }
        std::sort(uses.begin(), uses.end(),
                  [](const Use& a, const Use& b) { return a.entry < b.entry; });
        std::uint32_t last = 0;
        for (const Use& use : uses) {
            put_digits(text, use.entry - last);
            put_digits(text, use.impact);
            put_digits(text,
                       static_cast<std::uint32_t>(use.section) * 2 + (use.versions != 0 ? 1 : 0));
            if (use.versions != 0)
                put_digits(text, use.versions);
            last = use.entry;
        }
        return text;
    }

    const std::vector<std::string>& summaries_;
    std::array<std::uint16_t, 256> impacts_;
    TermIds ids_;
    std::vector<std::uint32_t> term_ids_; ///< of each summary's terms, one after another
    std::size_t next_term_ = 0;
    std::vector<std::uint32_t> ends_; ///< of each term's uses
    std::vector<Use> uses_;
    std::vector<Use> best_;              ///< by entry, for one short beginning
    std::vector<std::uint32_t> entries_; ///< of the summary that is read: its records' numbers
    RecordShards records_;
    std::vector<SiteAsset> files_;
};

} // namespace

std::vector<SiteAsset> search_files(const std::vector<std::string>& summaries,
                                    const SearchWeights& weights) {
    return IndexBuilder(summaries, weights).build();
}

} // namespace Lumenfold::Builder
