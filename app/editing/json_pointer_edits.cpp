#include "app/editing/json_pointer_edits.h"

#include <nlohmann/json.hpp>

#include <string>

namespace Lumenfold {

namespace {

/// Whether the document can still be written with this text in it.
bool is_utf8(const std::string& text) {
    try {
        (void)Json(text).dump();
        return true;
    } catch (const Json::exception&) {
        return false;
    }
}

} // namespace

void apply_edits(Json& document, const PointerEdits& edits) {
    for (const auto& [pointer, value] : edits) {
        if (!is_utf8(value))
            continue;
        try {
            document[Json::json_pointer(pointer)] = value;
        } catch (const Json::exception&) {
            // The file holds something else there; leave it alone.
        }
    }
}

} // namespace Lumenfold
