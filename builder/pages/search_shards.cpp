#include "builder/pages/search_shards.h"

#include <algorithm>

namespace Lumenfold::Builder {
namespace {

constexpr std::size_t TERM_FILE_BYTES = 5000;
constexpr std::size_t RECORD_FILE_BYTES = 3000;

std::string script(std::string_view path, std::string_view value) {
    std::string text = "lumenfoldSearch(\"";
    text += path.substr(path.find('/') + 1);
    text.append("\",").append(value);
    return text += ");\n";
}

/// Characters that two terms begin with alike, at most nine; whole characters of ASCII only, since
/// a script counts in other units.
std::size_t shared_beginning(std::string_view a, std::string_view b) {
    std::size_t shared = 0;
    while (shared < 9 && shared < a.size() && shared < b.size() && a[shared] == b[shared] &&
           static_cast<unsigned char>(a[shared]) < 0x80)
        ++shared;
    return shared;
}

/// The shortest beginning of `term` that is greater than `before`.
std::string_view separator(std::string_view before, std::string_view term) {
    std::size_t size = 0;
    while (size < before.size() && size < term.size() && before[size] == term[size])
        ++size;
    for (++size; size < term.size() && (static_cast<unsigned char>(term[size]) & 0xc0) == 0x80;)
        ++size;
    return term.substr(0, size);
}

} // namespace

void put_digits(std::string& out, std::uint32_t number) {
    const auto put = [&out](std::uint32_t digit) {
        out += static_cast<char>('0' + digit);
        if (out.back() == '\\')
            out += '\\';
    };
    for (; number >= 32; number >>= 5)
        put(32 + number % 32);
    put(number);
}

void TermShards::add(std::string_view term, std::string_view uses) {
    if (lines_.size() >= TERM_FILE_BYTES)
        close();
    if (lines_.empty()) {
        starts_.append(count_ == 0 ? "" : " ").append(separator(last_, term));
        last_.clear();
    }
    const std::size_t shared = shared_beginning(last_, term);
    lines_ += static_cast<char>('0' + shared);
    lines_.append(term.substr(shared));
    if (!uses.empty())
        lines_.append(" ").append(uses);
    lines_ += "\\n";
    last_ = term;
}

void TermShards::close() {
    const std::string path = path_ + std::to_string(count_++);
    files_.push_back({path + ".js", script(path, "\"" + lines_ + "\"")});
    lines_.clear();
}

std::string TermShards::finish() {
    if (!lines_.empty())
        close();
    return std::move(starts_);
}

std::uint32_t RecordShards::add(std::string_view record) {
    if (in_file_ == RECORDS_IN_FILE || lines_.size() + record.size() > RECORD_FILE_BYTES)
        finish();
    lines_.append(in_file_ == 0 ? "[\n" : ",\n").append(record);
    ++count_;
    return static_cast<std::uint32_t>(files_.size()) * RECORDS_IN_FILE + in_file_++;
}

void RecordShards::finish() {
    if (in_file_ == 0)
        return;
    const std::string path = "search/d" + std::to_string(files_.size());
    files_.push_back({path + ".js", script(path, lines_ + "\n]")});
    lines_.clear();
    in_file_ = 0;
}

void RecordShards::append_to(std::vector<SiteAsset>& files) {
    std::move(files_.begin(), files_.end(), std::back_inserter(files));
    files_.clear();
}

std::string index_script(std::size_t pages, std::string_view term_starts,
                         std::string_view mirror_starts) {
    std::string value = "{pages:" + std::to_string(pages) + ",t:\"";
    value.append(term_starts).append("\",r:\"").append(mirror_starts).append("\"}");
    return script("search/index", value);
}

} // namespace Lumenfold::Builder
