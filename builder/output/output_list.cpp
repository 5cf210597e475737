#include "builder/output/output_list.h"

#include <array>
#include <charconv>

namespace Lumenfold::Builder {

namespace {

constexpr std::string_view HEAD = "lumenfold-output\t1\n";
constexpr std::string_view HEAD_OF_ANY_FORMAT = "lumenfold-output\t";
constexpr std::string_view END = "end\t";

template <class Number>
void append_number(std::string& text, Number number) {
    std::array<char, 24> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    text.append(digits.data(), end);
}

template <class Number>
bool read_number(std::string_view text, Number& number) {
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end;
}

void append_file(std::string& text, const ListedFile& file) {
    if (file.stamp) {
        text += "F\t";
        append_number(text, file.stamp->size);
        text += '\t';
        append_number(text, file.stamp->modified);
        text += '\t' + hex_of(file.hash) + '\t';
    } else {
        text += "P\t";
    }
    text += file.path + '\n';
}

/// The text up to the next tab, taken from the front of `rest`; the last field takes all.
std::string_view take_field(std::string_view& rest) {
    const std::size_t tab = std::min(rest.find('\t'), rest.size());
    const std::string_view field = rest.substr(0, tab);
    rest.remove_prefix(std::min(tab + 1, rest.size()));
    return field;
}

bool read_file_fields(std::string_view fields, ListedFile& file) {
    FileStamp stamp;
    if (!read_number(take_field(fields), stamp.size) ||
        !read_number(take_field(fields), stamp.modified))
        return false;
    const std::optional<ContentHash> hash = hash_from_hex(take_field(fields));
    if (!hash)
        return false;
    file = {std::string(fields), stamp, *hash, false};
    return true;
}

bool read_line(std::string_view line, OutputList& list) {
    const std::string_view kind = take_field(line);
    if (kind == "D") {
        list.folders.emplace_back(line);
        return true;
    }
    if (kind == "U") {
        ListedUnit& unit = list.units.emplace_back();
        unit.sign = take_field(line);
        unit.note = take_field(line);
        unit.name = line;
        return true;
    }
    if (list.units.empty())
        return false;
    ListedFile& file = list.units.back().files.emplace_back();
    file.path = line;
    return kind == "P" || (kind == "F" && read_file_fields(line, file));
}

} // namespace

std::string list_text(const OutputList& list) {
    std::string text(HEAD);
    for (const std::string& folder : list.folders)
        text += "D\t" + folder + '\n';
    for (const ListedUnit& unit : list.units) {
        text += "U\t" + unit.sign + '\t' + unit.note + '\t' + unit.name + '\n';
        for (const ListedFile& file : unit.files)
            append_file(text, file);
    }
    const std::string hash = hex_of(hash_of(text));
    return text.append(END).append(hash) + '\n';
}

ListState parse_list(std::string_view text, OutputList& list) {
    if (!text.starts_with(HEAD))
        return text.starts_with(HEAD_OF_ANY_FORMAT) ? ListState::Later : ListState::Damaged;
    const std::size_t end_size = END.size() + 33;
    if (text.size() < HEAD.size() + end_size)
        return ListState::Damaged;
    const std::string_view lines = text.substr(0, text.size() - end_size);
    const std::string_view end = text.substr(lines.size());
    if (end != std::string(END) + hex_of(hash_of(lines)) + '\n')
        return ListState::Damaged;
    for (std::string_view rest = lines.substr(HEAD.size()); !rest.empty();) {
        const std::size_t length = rest.find('\n');
        if (length == std::string_view::npos || !read_line(rest.substr(0, length), list))
            return ListState::Damaged;
        rest.remove_prefix(length + 1);
    }
    return ListState::Good;
}

} // namespace Lumenfold::Builder
