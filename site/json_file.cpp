#include "site/json_file.h"

#include <nlohmann/json.hpp>

#include <array>
#include <fstream>
#include <system_error>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t MAX_LEVELS = 1000;

/// The byte (1-based) that opens a level too many, 0 if none does. Whether the text is JSON at
/// all is the parser's business.
std::size_t find_excess_level(std::string_view text) {
    std::size_t levels = 0;
    bool in_string = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (in_string) {
            if (c == '\\')
                ++i;
            else if (c == '"')
                in_string = false;
        } else if (c == '"') {
            in_string = true;
        } else if (c == '[' || c == '{') {
            if (++levels > MAX_LEVELS)
                return i + 1;
        } else if ((c == ']' || c == '}') && levels > 0) {
            --levels;
        }
    }
    return 0;
}

void report(JsonError* error, std::string message, std::size_t byte) {
    if (error)
        *error = {std::move(message), byte};
}

} // namespace

std::optional<Json> parse_json(std::string_view text, JsonError* error) {
    if (const std::size_t byte = find_excess_level(text)) {
        report(error, "nested deeper than 1000 levels", byte);
        return std::nullopt;
    }
    try {
        return Json::parse(text);
    } catch (const Json::parse_error& problem) {
        report(error, problem.what(), problem.byte);
    } catch (const Json::exception& problem) {
        // A number beyond the range of a double is no parse error to the library.
        report(error, problem.what(), 0);
    }
    return std::nullopt;
}

std::optional<std::string> read_text_file(const fs::path& path) {
    // Folders open on some systems, and a pipe would block.
    std::error_code error;
    if (!fs::is_regular_file(path, error))
        return std::nullopt;
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return std::nullopt;
    std::string text;
    std::array<char, 16384> block;
    do {
        in.read(block.data(), block.size());
        text.append(block.data(), static_cast<std::size_t>(in.gcount()));
    } while (in);
    if (in.bad())
        return std::nullopt;
    return text;
}

std::optional<Json> read_json_file(const fs::path& path) {
    const std::optional<std::string> text = read_text_file(path);
    return text ? parse_json(*text) : std::nullopt;
}

std::optional<std::string> dump_config(const Json& json) {
    try {
        return json.dump(2, ' ') + '\n';
    } catch (const Json::exception&) {
        return std::nullopt;
    }
}

bool write_text_file(const fs::path& path, std::string_view text, WriteCheck check) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out)
        return false;
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    out.close();
    return check == WriteCheck::Opened || out.good();
}

bool write_config_file(const fs::path& path, const Json& json, WriteCheck check) {
    const std::optional<std::string> text = dump_config(json);
    return text && write_text_file(path, *text, check);
}

std::string text_at(const Json& json, const char* key) {
    const auto found = json.find(key);
    return found != json.end() && found->is_string() ? found->get<std::string>() : std::string();
}

std::string quote_json_string(std::string_view text) {
    return Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace Lumenfold
