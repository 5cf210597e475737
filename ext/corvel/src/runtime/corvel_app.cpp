#include "runtime/corvel_app.h"

#include "runtime/app_state.h"

#include <algorithm>

namespace Corvel {
namespace {

/// Writes an entry. Tells the cache, since a render reads it.
template <class Map, class Value>
void store_entry(Map& map, RenderCache& cache, const std::string& path, Value&& value) {
    map.insert_or_assign(path, std::forward<Value>(value));
    cache.touch(path);
}

template <class Map>
void erase_entry(Map& map, RenderCache& cache, const std::string& path) {
    if (map.erase(path) > 0)
        cache.touch(path);
}

} // namespace

CorvelApp::CorvelApp()
    : state_(std::make_unique<State>()) {}
CorvelApp::~CorvelApp() = default;

Layers::LayersEngine& CorvelApp::engine() {
    return state_->engine;
}

void CorvelApp::set_root(const std::string& name) {
    state_->root_name = name;
    state_->cache.drop();
}

void CorvelApp::set_visible(const std::string& path, bool visible) {
    const bool changed =
        visible ? state_->hidden_paths.erase(path) > 0 : state_->hidden_paths.insert(path).second;
    if (changed)
        state_->cache.set_hidden(path, !visible);
}

void CorvelApp::add_state(const std::string& path, const std::string& state) {
    if (state_->node_states[path].insert(state).second)
        state_->cache.touch(path);
}

void CorvelApp::remove_state(const std::string& path, const std::string& state) {
    auto states = state_->node_states.find(path);
    if (states != state_->node_states.end() && states->second.erase(state) > 0)
        state_->cache.touch(path);
}

void CorvelApp::toggle_state(const std::string& path, const std::string& state) {
    std::set<std::string>& states = state_->node_states[path];
    if (states.erase(state) == 0)
        states.insert(state);
    state_->cache.touch(path);
}

void CorvelApp::set_state(const std::string& path, const std::string& state, bool on) {
    if (on)
        add_state(path, state);
    else
        remove_state(path, state);
}

void CorvelApp::set_checked(const std::string& path, bool on) {
    set_state(path, "Checked", on);
}

bool CorvelApp::is_checked(const std::string& path) const {
    auto states = state_->node_states.find(path);
    return states != state_->node_states.end() && states->second.contains("Checked");
}

void CorvelApp::set_text(const std::string& path, const std::string& text) {
    auto [entry, inserted] = state_->texts.try_emplace(path, text);
    if (!inserted) {
        if (entry->second == text)
            return;
        entry->second = text;
    }
    state_->cache.touch(path);
}

void CorvelApp::append_text(const std::string& path, const std::string& addition) {
    if (addition.empty())
        return;
    state_->texts[path].append(addition);
    state_->cache.touch(path);
}

void CorvelApp::set_source(const std::string& path, const std::string& source) {
    if (source.empty())
        erase_entry(state_->sources, state_->cache, path);
    else
        store_entry(state_->sources, state_->cache, path, source);
}

void CorvelApp::reread_source(const std::string& file) {
    constexpr int MOMENT_MS = 30;
    if (!run_after || !state_->withheld_sources.insert(file).second)
        return;
    state_->cache.restyle();
    run_after(MOMENT_MS, [this, file] {
        state_->withheld_sources.erase(file);
        state_->cache.restyle();
    });
}

void CorvelApp::set_href(const std::string& path, const std::string& href) {
    store_entry(state_->hrefs, state_->cache, path, href);
}

void CorvelApp::set_data(const std::string& path, const std::string& data) {
    store_entry(state_->datas, state_->cache, path, data);
}

void CorvelApp::set_height(const std::string& path, double pixels) {
    if (pixels == 0)
        erase_entry(state_->heights, state_->cache, path);
    else
        store_entry(state_->heights, state_->cache, path, pixels);
}

std::string CorvelApp::input_value(const std::string& path) const {
    auto value = state_->input_values.find(path);
    return value == state_->input_values.end() ? std::string() : value->second;
}

bool CorvelApp::has_input_value(const std::string& path) const {
    return state_->input_values.contains(path);
}

void CorvelApp::set_input_value(const std::string& path, const std::string& text) {
    state_->input_values.insert_or_assign(path, text);
}

void CorvelApp::queue_editor_text(const std::string& path, const std::string& text) {
    state_->pending_editor_texts.emplace_back(path, text);
}

void CorvelApp::add_global_state(const std::string& state) {
    state_->global_states.insert(state);
}

void CorvelApp::set_options(const std::string& path, std::vector<ComboItem> items) {
    SharedText& selection = state_->selections[path];
    auto selects = [&selection](const ComboItem& item) { return selection == item.value; };
    if (items.empty())
        selection = SharedText();
    else if (std::none_of(items.begin(), items.end(), selects))
        selection = items.front().value;
    store_entry(state_->options, state_->cache, path, SharedItems(std::move(items)));
}

void CorvelApp::set_selected(const std::string& path, const std::string& value) {
    if (state_->has_option(path, value))
        store_entry(state_->selections, state_->cache, path, SharedText(value));
}

std::string CorvelApp::selected(const std::string& path) const {
    auto selection = state_->selections.find(path);
    return selection == state_->selections.end() ? std::string() : selection->second.get();
}

void CorvelApp::set_rows(const std::string& key, std::vector<ListEntry> rows) {
    // The listener reads this list even if it replaces the stored one, or itself.
    const SharedRows stored = std::move(rows);
    state_->rows[key] = stored;
    auto listener = state_->row_listeners.find(key);
    if (listener == state_->row_listeners.end() || !listener->second)
        return;
    const RowsHandler handler = listener->second;
    handler(*stored);
}

void CorvelApp::pick_file(const PickRequest& request, TextHandler fn) {
    if (file_pick)
        file_pick(request, std::move(fn));
    else if (fn)
        fn({});
}

std::string CorvelApp::store_get(const std::string& key) const {
    auto value = store.find(key);
    return value == store.end() ? std::string() : value->second;
}

void CorvelApp::store_set(const std::string& key, const std::string& value) {
    if (value.empty())
        store.erase(key);
    else
        store[key] = value;
    if (store_write)
        store_write(key, value);
}

bool CorvelApp::State::has_option(std::string_view path, std::string_view value) const {
    auto items = options.find(path);
    return items != options.end() &&
           std::any_of(items->second.begin(), items->second.end(),
                       [value](const ComboItem& item) { return item.value == value; });
}

} // namespace Corvel
