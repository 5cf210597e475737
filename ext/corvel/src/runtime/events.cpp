#include "runtime/app_state.h"

namespace Corvel {
namespace {

/// A handler may replace or erase anything, itself included, so a copy of it is run.
template <class Map, class... Arguments>
void call_handler(const Map& handlers, const std::string& key, const Arguments&... arguments) {
    auto entry = handlers.find(key);
    if (entry == handlers.end() || !entry->second)
        return;
    const auto handler = entry->second;
    handler(arguments...);
}

/// What follows `prefix` in `event`, if it begins with it.
std::optional<std::string> payload(std::string_view event, std::string_view prefix) {
    if (!event.starts_with(prefix))
        return std::nullopt;
    return std::string(event.substr(prefix.size()));
}

} // namespace

void CorvelApp::on_click(const std::string& path, Action fn) {
    state_->click_handlers.insert_or_assign(path, std::move(fn));
}

void CorvelApp::on_input(const std::string& path, TextHandler fn) {
    state_->input_handlers.insert_or_assign(path, std::move(fn));
}

void CorvelApp::on_scan(const std::string& path, TextHandler fn) {
    state_->scan_handlers.insert_or_assign(path, std::move(fn));
}

void CorvelApp::on_select(const std::string& path, TextHandler fn) {
    state_->select_handlers.insert_or_assign(path, std::move(fn));
}

void CorvelApp::on_row_click(const std::string& key, RowHandler fn) {
    state_->row_click_handlers.insert_or_assign(key, std::move(fn));
}

void CorvelApp::on_rows(const std::string& key, RowsHandler fn) {
    state_->row_listeners.insert_or_assign(key, std::move(fn));
}

void CorvelApp::dispatch_event(const std::string& path, std::string_view event) {
    if (auto text = payload(event, "input:")) {
        state_->input_values.insert_or_assign(path, *text);
        call_handler(state_->input_handlers, path, *text);
    } else if (auto scanned = payload(event, "scan:")) {
        call_handler(state_->scan_handlers, path, *scanned);
    } else if (auto status = payload(event, "scanstatus:")) {
        if (const auto hook = scan_status_hook)
            hook(path, *status);
    } else if (auto value = payload(event, "select:")) {
        select_option(path, *value);
    } else if (event == "click") {
        click(path);
    }
}

void CorvelApp::select_option(const std::string& path, const std::string& value) {
    if (!state_->has_option(path, value))
        return;
    SharedText& selection = state_->selections[path];
    if (selection == value)
        return;
    selection = value;
    state_->cache.touch(path);
    call_handler(state_->select_handlers, path, value);
}

void CorvelApp::click(const std::string& path) {
    if (auto card = state_->theme_card_targets.find(path);
        card != state_->theme_card_targets.end()) {
        set_theme(std::string(card->second));
        return;
    }
    if (auto row = state_->row_targets.find(path); row != state_->row_targets.end()) {
        const RowTarget target = row->second;
        if (state_->row_click_handlers.contains(target.list_key))
            call_handler(state_->row_click_handlers, target.list_key, target.list_key,
                         target.item_id, target.action);
        else if (const auto handler = on_any_row_click)
            handler(target.list_key, target.item_id, target.action);
        return;
    }
    // A check box changes first, so that its handler sees the new state.
    if (state_->checkbox_paths.contains(path))
        toggle_state(path, "Checked");
    call_handler(state_->click_handlers, path);
}

} // namespace Corvel
