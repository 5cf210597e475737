#include "site/json_file.h"

#include "site/path_text.h"

#include <nlohmann/json.hpp>

namespace Lumenfold {

namespace fs = std::filesystem;

std::optional<Json> read_json_file(const fs::path& path) {
    const std::optional<std::string> text = read_text_file(path);
    return text ? parse_json(*text) : std::nullopt;
}

Result write_config_file(const fs::path& path, const Json& json) {
    const std::optional<std::string> text = dump_config(json);
    if (!text)
        return Result::failed(path_to_utf8(path) + ": a text in it is not UTF-8");
    return write_text_file(path, *text);
}

} // namespace Lumenfold
