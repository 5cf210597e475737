#include "runtime/app_state.h"

namespace Corvel {

const std::string& CorvelApp::active_theme() const {
    return state_->active_theme;
}

const std::map<std::string, Theme>& CorvelApp::themes() const {
    return state_->themes;
}

bool CorvelApp::set_theme(const std::string& display_name) {
    auto theme = state_->themes.find(display_name);
    if (theme == state_->themes.end())
        return false;
    state_->apply_theme(theme->second.values);
    set_active_theme(theme->first);
    return true;
}

bool CorvelApp::remove_theme(const std::string& display_name) {
    auto theme = state_->themes.find(display_name);
    if (theme == state_->themes.end() || state_->themes.size() < 2)
        return false;
    if (theme->first == state_->active_theme) {
        auto next = state_->themes.begin();
        if (next == theme)
            ++next;
        state_->apply_theme(next->second.values);
        set_active_theme(next->first);
    }
    // The name may be a reference into the entry, and `theme_write` may have changed the map.
    state_->themes.erase(std::string(display_name));
    state_->cache.restyle();
    return true;
}

std::string CorvelApp::add_theme_text(const std::string& text) {
    std::optional<Theme> theme = parse_theme_file(text);
    if (!theme)
        return {};
    std::string display_name = theme_display_name(*theme);
    Theme& stored = state_->themes[display_name];
    stored = *std::move(theme);
    state_->cache.restyle();
    if (display_name == state_->active_theme)
        state_->apply_theme(stored.values);
    return display_name;
}

void CorvelApp::set_active_theme(const std::string& display_name) {
    if (state_->active_theme == display_name)
        return;
    const std::string name = display_name;
    state_->active_theme = name;
    state_->cache.restyle();
    if (const auto write = theme_write)
        write(name);
}

const Theme* CorvelApp::State::theme_in_force() const {
    auto theme = themes.find(active_theme);
    return theme == themes.end() ? nullptr : &theme->second;
}

void CorvelApp::State::apply_theme(const std::map<std::string, ThemeValue>& values) {
    Layers::LLayer* layer = engine.find_layer("Theme");
    if (!layer)
        return;
    // Our own values change no structure, so what is known of that stays.
    const bool structure_known = cache.style_revision == Layers::style_revision();
    for (const auto& [key, fallback] : default_theme()) {
        if (Layers::LAttribute* attribute = layer->find_attribute(key)) {
            auto value = values.find(key);
            attribute->set_value(value == values.end() ? fallback : value->second);
        }
    }
    cache.restyle();
    if (structure_known)
        cache.style_revision = Layers::style_revision();
}

} // namespace Corvel
