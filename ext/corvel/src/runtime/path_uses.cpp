#include "runtime/app_state.h"
#include "runtime/corvel_app.h"

namespace Corvel {

namespace {

template <class Map>
void add_uses(CorvelApp::PathUses& uses, const Map& map, const char* word) {
    for (const auto& entry : map)
        uses[entry.first].insert(word);
}

} // namespace

CorvelApp::PathUses CorvelApp::path_uses() const {
    PathUses uses;
    add_uses(uses, state_->texts, "text");
    add_uses(uses, state_->sources, "source");
    add_uses(uses, state_->hrefs, "href");
    add_uses(uses, state_->datas, "data");
    add_uses(uses, state_->heights, "height");
    add_uses(uses, state_->node_states, "state");
    add_uses(uses, state_->options, "options");
    add_uses(uses, state_->input_values, "input value");
    add_uses(uses, state_->click_handlers, "click");
    add_uses(uses, state_->input_handlers, "input");
    add_uses(uses, state_->scan_handlers, "scan");
    add_uses(uses, state_->select_handlers, "select");
    for (const std::string& path : state_->hidden_paths)
        uses[path].insert("hidden");
    return uses;
}

std::set<std::string> CorvelApp::list_keys() const {
    std::set<std::string> keys;
    const SharedRows never_filled; // the entry that a render made for a list that it shows
    for (const auto& [key, rows] : state_->rows)
        if (!rows.same(never_filled))
            keys.insert(key);
    for (const auto& entry : state_->row_click_handlers)
        keys.insert(entry.first);
    for (const auto& entry : state_->row_listeners)
        keys.insert(entry.first);
    return keys;
}

bool CorvelApp::has_state(const std::string& path, const std::string& state) const {
    const auto states = state_->node_states.find(path);
    return states != state_->node_states.end() && states->second.contains(state);
}

} // namespace Corvel
