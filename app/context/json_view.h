#pragma once

#include "site/json_file.h"

#include <string>

namespace Lumenfold {

/// The value under `key`; null when `json` is no object or has no such key. Valid while `json` is.
const Json& member_at(const Json& json, const char* key);

/// The array under `key`; empty when there is anything else.
const Json& array_at(const Json& json, const char* key);

/// Whether the value under `key` is the boolean true.
bool flag_at(const Json& json, const char* key);

/// The string at a JSON pointer; empty when there is none.
std::string text_at_pointer(const Json& json, const std::string& pointer);

/// Parses `text`; an empty object when it does not parse.
Json parse_or_empty(const std::string& text);

} // namespace Lumenfold
