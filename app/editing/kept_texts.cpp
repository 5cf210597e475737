#include "app/editing/kept_texts.h"

#include "site/json_file.h"
#include "site/path_text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <system_error>
#include <utility>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

constexpr std::chrono::hours LIFETIME(24 * 30);
constexpr const char* EXTENSION = ".kept";

/// How many texts of one file can be kept one behind the other.
constexpr int MOST_TEXTS = 8;

/// The place of a file's text: its path as a number (FNV-1a), since a path may be too long for a
/// name. The path itself stands in the file.
fs::path place_of(const std::string& folder, const std::string& file, int number) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char byte : file)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
    const std::string behind = number == 0 ? std::string() : "-" + std::to_string(number);
    return path_from_utf8(folder) / (std::to_string(hash) + behind + EXTENSION);
}

struct PlacedText {
    int number = 0;
    KeptText text;
};

std::optional<PlacedText> find_at(const std::string& folder, const std::string& file, int number) {
    const auto kept = read_json_file(place_of(folder, file, number));
    if (!kept || text_at(*kept, "file") != file)
        return std::nullopt;
    return PlacedText{number,
                      {text_at(*kept, "text"), text_at(*kept, "date"), text_at(*kept, "begun_on")}};
}

/// The one with the highest number.
std::optional<PlacedText> find_last(const std::string& folder, const std::string& file) {
    if (folder.empty())
        return std::nullopt;
    for (int number = MOST_TEXTS - 1; number >= 0; --number)
        if (auto kept = find_at(folder, file, number))
            return kept;
    return std::nullopt;
}

std::string local_time() {
    const std::time_t now = std::time(nullptr);
    std::array<char, 32> text{};
    const std::size_t size =
        std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", std::localtime(&now));
    return {text.data(), size};
}

} // namespace

void keep_text(const std::string& folder, const std::string& file, const std::string& text,
               const std::string& begun_on, KeptBefore before) {
    if (folder.empty())
        return;
    const auto last = find_last(folder, file);
    if (last && last->text.text == text && last->text.begun_on == begun_on)
        return; // and keeps its date
    const int step = before == KeptBefore::Stays ? 1 : 0;
    const int number = last ? std::min(last->number + step, MOST_TEXTS - 1) : 0;
    Json kept = Json::object();
    kept["file"] = file;
    kept["date"] = local_time();
    kept["text"] = text;
    kept["begun_on"] = begun_on;
    const fs::path place = place_of(folder, file, number);
    const fs::path draft = fs::path(place).concat(".new");
    std::error_code error;
    fs::create_directories(place.parent_path(), error);
    // Made empty first, so that nobody else can read it at any time.
    if (!write_text_file(draft, ""))
        return;
    fs::permissions(draft, fs::perms::owner_read | fs::perms::owner_write, error);
    if (!error && write_config_file(draft, kept))
        fs::rename(draft, place, error);
    fs::remove(draft, error);
}

std::optional<KeptText> find_kept_text(const std::string& folder, const std::string& file) {
    auto last = find_last(folder, file);
    return last ? std::optional(std::move(last->text)) : std::nullopt;
}

void drop_kept_text(const std::string& folder, const std::string& file) {
    std::error_code ignored;
    if (const auto last = find_last(folder, file))
        fs::remove(place_of(folder, file, last->number), ignored);
}

void drop_kept_text(const std::string& folder, const std::string& file, const std::string& text) {
    std::error_code ignored;
    for (int number = 0; number < MOST_TEXTS && !folder.empty(); ++number)
        if (const auto kept = find_at(folder, file, number); kept && kept->text.text == text)
            fs::remove(place_of(folder, file, number), ignored);
}

void drop_old_texts(const std::string& folder) {
    std::error_code error;
    const auto oldest = fs::file_time_type::clock::now() - LIFETIME;
    for (fs::directory_iterator it(path_from_utf8(folder), error), end; !error && it != end;
         it.increment(error)) {
        std::error_code ignored;
        if (it->path().extension() == EXTENSION && it->last_write_time(ignored) < oldest)
            fs::remove(it->path(), ignored);
    }
}

} // namespace Lumenfold
