#pragma once

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Lumenfold {

using Json = nlohmann::ordered_json;

/// Why a text did not become a JSON document.
struct JsonError {
    std::string message;  ///< the parser's words
    std::size_t byte = 0; ///< 1-based position of the last byte read
};

/// Parses a document of at most 1,000 levels (RFC 8259, no comments) in time linear in the text;
/// nothing on failure. Of a key that an object repeats, the last value counts, in the first place.
/// A deeper document counts as one that does not parse, since writing and comparing it would
/// recurse too far, and so does one with a NUL byte anywhere.
std::optional<Json> parse_json(std::string_view text, JsonError* error = nullptr);

/// The line of a `text` that does not parse at which the parser stopped, from 1.
std::size_t json_error_line(const JsonError& error, std::string_view text);

/// The words for a user on a `text` that does not parse: the line (from 1) and the parser's words
/// without their prefix.
std::string describe_json_error(const JsonError& error, std::string_view text);

/// The normal form of a document: indent of 2, non-ASCII as it is, one line feed at the end.
/// Nothing when a text in it is not UTF-8.
std::optional<std::string> dump_config(const Json& json);

/// The string under `key`; empty when the value is no object, the key is missing or no string.
std::string text_at(const Json& json, const char* key);

/// `text` as a JSON string with its quotes.
std::string quote_json_string(std::string_view text);

/// Puts a key that the object does not have yet behind its others, without looking for it.
void append_member(Json& object, std::string key, Json value);

} // namespace Lumenfold
