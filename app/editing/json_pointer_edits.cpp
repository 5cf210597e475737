#include "app/editing/json_pointer_edits.h"

#include "site/shown_record.h"

#include <nlohmann/json.hpp>

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Lumenfold {

namespace {

enum class Fit : std::uint8_t {
    Fits,
    NoPlace,   ///< the file holds something else on the way
    NoElement, ///< a list lacks the element, or has another record in its place
};

/// Whether the document can still be written with this text in it.
bool is_utf8(const std::string& text) {
    try {
        (void)Json(text).dump();
        return true;
    } catch (const Json::exception&) {
        return false;
    }
}

/// The parts of a JSON pointer; nothing for a text that is none.
std::optional<std::vector<std::string>> split_pointer(const std::string& pointer) {
    try {
        std::vector<std::string> parts;
        for (Json::json_pointer rest(pointer); !rest.empty(); rest.pop_back())
            parts.insert(parts.begin(), rest.back());
        return parts;
    } catch (const Json::exception&) {
        return std::nullopt;
    }
}

std::optional<std::size_t> index_of(std::string_view part) {
    std::size_t index = 0;
    const char* end = part.data() + part.size();
    const auto [rest, error] = std::from_chars(part.data(), end, index);
    return error == std::errc() && rest == end ? std::optional(index) : std::nullopt;
}

/// One step into a document; null where it does not lead on.
const Json* step(const Json* json, const std::string& part) {
    if (!json)
        return nullptr;
    if (json->is_array()) {
        const auto index = index_of(part);
        return index && *index < json->size() ? &(*json)[*index] : nullptr;
    }
    const auto member = json->find(part);
    return member != json->end() ? &*member : nullptr;
}

Fit find_place(const Json& document, const std::vector<std::string>& parts, const Json* shown) {
    const Json* place = &document;
    for (const std::string& part : parts) {
        const bool in_list = place && place->is_array();
        const bool missing = !place || place->is_null();
        if (!missing && !in_list && !place->is_object())
            return Fit::NoPlace;
        if (missing && index_of(part))
            return Fit::NoElement; // the list that it stood in is gone
        place = step(place, part);
        shown = step(shown, part);
        if (in_list && (!place || (shown && !is_same_record(*shown, *place))))
            return Fit::NoElement;
    }
    return Fit::Fits;
}

/// Does nothing where an edit before it has put something else on the way.
void assign(Json& document, const std::vector<std::string>& parts, const std::string& text) {
    if (find_place(document, parts, nullptr) != Fit::Fits)
        return;
    Json* place = &document;
    for (const std::string& part : parts)
        place = place->is_array() ? &(*place)[*index_of(part)] : &(*place)[part];
    *place = text;
}

} // namespace

FittingEdits find_fitting(const Json& document, const PointerEdits& edits, const Json* shown) {
    FittingEdits fitting;
    for (const auto& [pointer, text] : edits) {
        const auto parts = split_pointer(pointer);
        if (!parts || !is_utf8(text))
            continue;
        const Fit fit = find_place(document, *parts, shown);
        if (fit == Fit::Fits)
            fitting.edits.emplace(pointer, text);
        else if (fit == Fit::NoElement)
            fitting.all_found = false;
    }
    return fitting;
}

void assign_edits(Json& document, const PointerEdits& edits) {
    for (const auto& [pointer, text] : edits)
        if (const auto parts = split_pointer(pointer))
            assign(document, *parts, text);
}

} // namespace Lumenfold
