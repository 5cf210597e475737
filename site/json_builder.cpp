#include "site/json_builder.h"

#include <algorithm>

namespace Lumenfold {

namespace {

constexpr std::size_t FEW_MEMBERS = 16;

} // namespace

bool JsonBuilder::key(std::string& name) {
    Level& level = levels_.back();
    auto& members = level.members;
    if (members.size() < FEW_MEMBERS) {
        const auto found = std::find_if(members.begin(), members.end(),
                                        [&](const auto& member) { return member.first == name; });
        level.member = static_cast<std::size_t>(found - members.begin());
    } else {
        if (level.places.empty())
            for (std::size_t i = 0; i < members.size(); ++i)
                level.places.emplace(members[i].first, i);
        level.member = level.places.emplace(name, members.size()).first->second;
    }
    if (level.member == members.size())
        members.emplace_back(std::move(name), nullptr);
    return true;
}

bool JsonBuilder::end_object() {
    Json value = Json::object();
    auto& members = value.get_ref<Json::object_t&>();
    members.reserve(levels_.back().members.size());
    for (auto& [name, member] : levels_.back().members)
        members.emplace_back(std::move(name), std::move(member));
    levels_.pop_back();
    return add(std::move(value));
}

bool JsonBuilder::end_array() {
    Json value = std::move(levels_.back().elements);
    levels_.pop_back();
    return add(std::move(value));
}

bool JsonBuilder::parse_error(std::size_t byte, const std::string&,
                              const Json::exception& problem) {
    error_ = problem.what();
    error_byte_ = byte;
    return false;
}

bool JsonBuilder::open(Json::value_t type) {
    levels_.push_back({type, {}, {}, 0, {}});
    return true;
}

bool JsonBuilder::add(Json value) {
    if (levels_.empty())
        document_ = std::move(value);
    else if (Level& level = levels_.back(); level.type == Json::value_t::array)
        level.elements.push_back(std::move(value));
    else
        level.members[level.member].second = std::move(value);
    return true;
}

} // namespace Lumenfold
