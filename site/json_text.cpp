#include "site/json_text.h"

#include "json/json_depth.h"
#include "site/json_builder.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace Lumenfold {

namespace {

void report(JsonError* error, std::string message, std::size_t byte) {
    if (error)
        *error = {std::move(message), byte};
}

} // namespace

std::optional<Json> parse_json(std::string_view text, JsonError* error) {
    // The parser takes a NUL for the end of the text.
    if (const std::size_t nul = text.find('\0'); nul != std::string_view::npos) {
        report(error, "a NUL byte is no part of JSON", nul + 1);
        return std::nullopt;
    }
    if (const std::size_t byte = Corvel::find_json_level_beyond(text, Corvel::MAX_JSON_DEPTH)) {
        report(error, "nested deeper than 1000 levels", byte);
        return std::nullopt;
    }
    JsonBuilder builder;
    if (Json::sax_parse(text, &builder))
        return builder.take_document();
    report(error, builder.error(), builder.error_byte());
    return std::nullopt;
}

std::size_t json_error_line(const JsonError& error, std::string_view text) {
    const std::string_view before = text.substr(0, error.byte > 1 ? error.byte - 1 : 0);
    return 1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
}

std::string describe_json_error(const JsonError& error, std::string_view text) {
    const std::size_t line = json_error_line(error, text);
    const std::size_t prefix = error.message.find(": ");
    return "Invalid JSON — line " + std::to_string(line) + ": " +
           error.message.substr(prefix == std::string::npos ? 0 : prefix + 2);
}

std::optional<std::string> dump_config(const Json& json) {
    try {
        return json.dump(2, ' ') + '\n';
    } catch (const Json::exception&) {
        return std::nullopt;
    }
}

std::string text_at(const Json& json, const char* key) {
    const auto found = json.find(key);
    return found != json.end() && found->is_string() ? found->get<std::string>() : std::string();
}

std::string quote_json_string(std::string_view text) {
    return Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}

void append_member(Json& object, std::string key, Json value) {
    object.get_ref<Json::object_t&>().emplace_back(std::move(key), std::move(value));
}

} // namespace Lumenfold
