#include "suggestions.h"

#include <algorithm>
#include <cctype>

namespace CorvelLint {
namespace {

// Names are short; longer texts are no slips of the hand.
constexpr std::size_t LONGEST_NAME = 100;

std::string lowered(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) {
        return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    });
    return lower;
}

// How many letters have to be put in, taken out, replaced or exchanged with their neighbour.
std::size_t edits_between(const std::string& a, const std::string& b) {
    std::vector<std::size_t> before;
    std::vector<std::size_t> last(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        last[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::vector<std::size_t> row(b.size() + 1, i);
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, replaced});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        before = std::move(last);
        last = std::move(row);
    }
    return last.back();
}

} // namespace

std::string nearest(std::string_view word, const std::vector<std::string>& candidates) {
    const std::string wanted = lowered(word);
    std::string best;
    std::size_t best_edits = std::max<std::size_t>(1, word.size() / 3) + 1;
    for (const std::string& candidate : candidates) {
        if (candidate == word || std::max(candidate.size(), word.size()) > LONGEST_NAME ||
            candidate.empty())
            continue;
        const std::size_t edits = edits_between(wanted, lowered(candidate));
        if (edits < best_edits || (edits == best_edits && candidate < best && !best.empty())) {
            best = candidate;
            best_edits = edits;
        }
    }
    return best;
}

std::string did_you_mean(std::string_view word, const std::vector<std::string>& candidates) {
    const std::string near = nearest(word, candidates);
    return near.empty() ? std::string() : "did you mean `" + near + "`?";
}

std::vector<std::string> split_words(std::string_view text) {
    std::vector<std::string> words;
    while (!text.empty()) {
        const std::size_t comma = std::min(text.find(','), text.size());
        std::string_view word = text.substr(0, comma);
        word.remove_prefix(std::min(word.find_first_not_of(' '), word.size()));
        word = word.substr(0, word.find_last_not_of(' ') + 1);
        if (!word.empty())
            words.emplace_back(word);
        text.remove_prefix(std::min(comma + 1, text.size()));
    }
    return words;
}

std::string in_words(const std::vector<std::string>& words) {
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i > 0)
            text += i + 1 == words.size() ? " or " : ", ";
        text += '`' + words[i] + '`';
    }
    return text;
}

} // namespace CorvelLint
