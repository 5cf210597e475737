#include "site/shown_record.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace Lumenfold {

namespace {

constexpr const char* NAMING_KEYS[] = {"slug",           "id",  "type", "name", "label",
                                       "platform_label", "url", "href"};

} // namespace

Json* find_shown(Json* list, const ShownRecord& shown) {
    if (!list || !list->is_array() || shown.index >= list->size())
        return nullptr;
    Json& record = (*list)[shown.index];
    const bool same = std::all_of(shown.texts.begin(), shown.texts.end(), [&](const auto& text) {
        return text_at(record, text.first.c_str()) == text.second;
    });
    return same ? &record : nullptr;
}

bool is_same_record(const Json& before, const Json& now) {
    if (!before.is_object() || !now.is_object())
        return before == now;
    return std::all_of(std::begin(NAMING_KEYS), std::end(NAMING_KEYS),
                       [&](const char* key) { return text_at(before, key) == text_at(now, key); });
}

} // namespace Lumenfold
