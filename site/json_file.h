#pragma once

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace Lumenfold {

using Json = nlohmann::ordered_json;

/// Why a text did not become a JSON document.
struct JsonError {
    std::string message;  ///< the parser's words
    std::size_t byte = 0; ///< 1-based position of the last byte read; 0 if unknown
};

/// Parses a document of at most 1,000 levels (RFC 8259, no comments); nothing on failure. A deeper
/// one counts as one that does not parse, since writing and comparing it would recurse too far.
std::optional<Json> parse_json(std::string_view text, JsonError* error = nullptr);

/// The whole file as bytes; nothing if it is no regular file or cannot be opened.
std::optional<std::string> read_text_file(const std::filesystem::path& path);

/// Reads and parses a file; nothing if it cannot be opened or does not parse.
std::optional<Json> read_json_file(const std::filesystem::path& path);

/// The normal form of a document: indent of 2, non-ASCII as it is, one line feed at the end.
/// Nothing when a text in it is not UTF-8.
std::optional<std::string> dump_config(const Json& json);

/// Which failures of a write count: that the file does not open, or also that not every byte
/// arrives (a full disk).
enum class WriteCheck : std::uint8_t { Opened, Complete };

/// Writes `text` in place, truncating first. False if the file cannot be opened, or fails `check`.
bool write_text_file(const std::filesystem::path& path, std::string_view text,
                     WriteCheck check = WriteCheck::Opened);

/// Writes the normal form in place; the text is complete before the file is opened, so a document
/// with no normal form fails without touching the file. Otherwise as `write_text_file`.
bool write_config_file(const std::filesystem::path& path, const Json& json,
                       WriteCheck check = WriteCheck::Opened);

/// The string under `key`; empty when the value is no object, the key is missing or no string.
std::string text_at(const Json& json, const char* key);

/// `text` as a JSON string with its quotes.
std::string quote_json_string(std::string_view text);

} // namespace Lumenfold
