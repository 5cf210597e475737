#include "app/editing/kept_texts.h"

#include "site/json_file.h"
#include "site/path_text.h"

#include <nlohmann/json.hpp>

#include <array>
#include <chrono>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <system_error>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

constexpr std::chrono::hours LIFETIME(24 * 30);
constexpr const char* EXTENSION = ".kept";

/// The place of a file's text: its path as a number (FNV-1a), since a path may be too long for a
/// name. The path itself stands in the file.
fs::path place_of(const std::string& folder, const std::string& file) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char byte : file)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
    return path_from_utf8(folder) / (std::to_string(hash) + EXTENSION);
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
               const std::string& begun_on) {
    if (folder.empty())
        return;
    if (const auto kept = find_kept_text(folder, file);
        kept && kept->text == text && kept->begun_on == begun_on)
        return; // and keeps its date
    Json kept = Json::object();
    kept["file"] = file;
    kept["date"] = local_time();
    kept["text"] = text;
    kept["begun_on"] = begun_on;
    const fs::path place = place_of(folder, file);
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
    if (folder.empty())
        return std::nullopt;
    const auto kept = read_json_file(place_of(folder, file));
    if (!kept || text_at(*kept, "file") != file)
        return std::nullopt;
    return KeptText{text_at(*kept, "text"), text_at(*kept, "date"), text_at(*kept, "begun_on")};
}

void drop_kept_text(const std::string& folder, const std::string& file) {
    std::error_code ignored;
    if (!folder.empty())
        fs::remove(place_of(folder, file), ignored);
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
