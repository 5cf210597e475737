#pragma once

#include "site/json_file.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

namespace Lumenfold {

/// Stores words for the user, where somebody asked for them. Always false, for a caller's return.
bool fail(std::string* error, std::string message);

/// Changes a document in memory; false leaves the file as it is.
using ConfigEdit = std::function<bool(Json& json)>;

/// One transaction without words: reads the object in the file, edits it and writes it in place.
/// False if the file does not hold an object, `edit` refuses, or the file does not open again.
bool edit_config_file(const std::filesystem::path& path, const ConfigEdit& edit);

/// The kind of file that an adder works on, for its words and its rules.
enum class RecordFile : std::uint8_t {
    Config,  ///< a site or project configuration, which must exist
    Manifest ///< a source-root manifest, which comes into being and is held to its format
};

/// The same with words: why the file cannot be read or written goes to `error`; `edit` tells its
/// own reasons.
bool edit_record_file(const std::filesystem::path& path, RecordFile kind, const ConfigEdit& edit,
                      std::string* error);

/// The object under `key`, put there in place of anything else.
Json& object_at(Json& object, const char* key);
/// The array under `key`, put there in place of anything else.
Json& list_at(Json& object, const char* key);
/// The array under `key` of an object; null if there is none.
Json* find_list(Json& object, const std::string& key);
/// The array `key` within the object `parent`; null if there is none.
Json* find_list(Json& object, const char* parent, const char* key);

/// Takes element `index` out of a list; false for a null list and an index past its end.
bool erase_element(Json* list, std::size_t index);

/// Takes out the elements that `matches`.
void erase_elements(Json& list, const std::function<bool(const Json&)>& matches);

} // namespace Lumenfold
