#include "findings.h"

#include <algorithm>
#include <fstream>
#include <ostream>

namespace CorvelLint {
namespace {

constexpr std::size_t MOST_FINDINGS = 1000;
constexpr std::size_t WIDEST_LINE = 160; // in bytes; of longer ones a part is shown

bool is_word_byte(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '-';
}

// The first place of `text` in `line`, as a whole word where there is one.
std::size_t find_text(const std::string& line, std::string_view text) {
    if (text.empty())
        return std::string::npos;
    for (std::size_t at = line.find(text); at != std::string::npos; at = line.find(text, at + 1)) {
        const std::size_t end = at + text.size();
        const bool begins = at == 0 || !is_word_byte(line[at - 1]) || !is_word_byte(text.front());
        const bool ends =
            end == line.size() || !is_word_byte(line[end]) || !is_word_byte(text.back());
        if (begins && ends)
            return at;
    }
    return line.find(text);
}

// A byte that begins a character of UTF-8.
bool begins_character(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
}

std::size_t characters(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), begins_character));
}

} // namespace

void Findings::add(const Place& place, std::string_view at, const std::string& message,
                   const std::string& help) {
    const std::string line = line_at(place);
    std::size_t start = find_text(line, at);
    std::size_t length = at.size();
    if (start == std::string::npos) {
        start = std::min(line.find_first_not_of(" \t"), line.size());
        length = line.size() - start;
    }
    add_at(place, start + 1, length, message, help);
}

void Findings::add_at(const Place& place, std::size_t column, std::size_t length,
                      const std::string& message, const std::string& help) {
    if (findings_.size() < MOST_FINDINGS)
        findings_.insert({place, column, message, help, length});
    else
        ++uncounted_;
}

void Findings::print(std::ostream& out) {
    for (const Finding& finding : findings_)
        print(out, finding);
    if (uncounted_ > 0)
        out << "and " << uncounted_ << " more\n";
}

void Findings::print(std::ostream& out, const Finding& finding) {
    std::string line = line_at(finding.place);
    const std::string_view before = std::string_view(line).substr(0, finding.column - 1);
    out << finding.place.file << ':' << finding.place.line << ':' << characters(before) + 1 << ": "
        << finding.message << '\n';
    if (!line.empty()) {
        const std::size_t skipped = before.size() > WIDEST_LINE / 2 ? before.size() - 20 : 0;
        line = line.substr(skipped, WIDEST_LINE);
        const std::string number = std::to_string(finding.place.line);
        const std::size_t start = finding.column - 1 - skipped;
        const std::size_t end = std::min(line.size(), start + finding.length);
        std::string blanks = line.substr(0, start);
        std::replace_if(
            blanks.begin(), blanks.end(), [](char c) { return c != '\t'; }, ' ');
        const std::size_t marked =
            start < end ? characters(std::string_view(line).substr(start, end - start)) : 0;
        const std::size_t wide =
            start < line.size() ? characters(std::string_view(line).substr(0, start)) : start;
        blanks.resize(std::min(blanks.size(), wide));
        out << "  " << number << " | " << line << '\n'
            << "  " << std::string(number.size(), ' ') << " | " << blanks
            << std::string(std::max<std::size_t>(marked, 1), '^') << '\n';
    }
    if (!finding.help.empty())
        out << "  " << finding.help << '\n';
}

std::string Findings::line_at(const Place& place) {
    const std::vector<std::string>& lines = lines_of(place.file);
    return place.line > 0 && place.line <= lines.size() ? lines[place.line - 1] : std::string();
}

const std::vector<std::string>& Findings::lines_of(const std::string& file) {
    const auto [known, is_new] = lines_.try_emplace(file);
    if (is_new) {
        std::ifstream stream(file, std::ios::binary);
        for (std::string line; std::getline(stream, line);) {
            if (line.ends_with('\r'))
                line.pop_back();
            known->second.push_back(line);
        }
    }
    return known->second;
}

} // namespace CorvelLint
