#pragma once

#include "site/json_text.h"
#include "site/result.h"
#include "site/shown_record.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

namespace Lumenfold {

/// Changes a document in memory; a failure leaves the file as it is.
using ConfigEdit = std::function<Result(Json& json)>;

/// The kind of file that an operation works on, for its words and its rules.
enum class RecordFile : std::uint8_t {
    Config,  ///< a site or project configuration, which must exist
    Manifest ///< a source-root manifest, which comes into being and is held to its format
};

/// One transaction: reads the object in the file, edits it and writes it in place.
Result edit_record_file(const std::filesystem::path& path, RecordFile kind, const ConfigEdit& edit);

/// The same on a configuration.
Result edit_config_file(const std::filesystem::path& path, const ConfigEdit& edit);

/// The object under `key`, put there in place of anything else.
Json& object_at(Json& object, const char* key);
/// The array under `key`, put there in place of anything else.
Json& list_at(Json& object, const char* key);
/// The array under `key` of an object; null if there is none.
Json* find_list(Json& object, const std::string& key);
/// The array `key` within the object `parent`; null if there is none.
Json* find_list(Json& object, const char* parent, const char* key);

/// Takes the record shown out of a list; refuses if it is not in its place any more.
Result erase_shown(Json* list, const ShownRecord& shown);

/// Takes out the elements that `matches`; how many they were.
std::size_t erase_elements(Json& list, const std::function<bool(const Json&)>& matches);

} // namespace Lumenfold
