#include "screens/window_tabs.h"

#include "runtime/corvel_app.h"

#include <algorithm>

namespace Corvel {
namespace {

auto find_entry(std::vector<TabEntry>& entries, const std::string& tab_path) {
    return std::find_if(entries.begin(), entries.end(),
                        [&](const TabEntry& entry) { return entry.tab_path == tab_path; });
}

} // namespace

WindowTabs::WindowTabs(CorvelApp& application)
    : app(&application) {}

void WindowTabs::add(const std::string& tab_path, const std::string& panel_path,
                     const std::string& state) {
    const TabEntry entry{tab_path, panel_path, state};
    if (const auto known = find_entry(entries, tab_path); known != entries.end())
        *known = entry;
    else
        entries.push_back(entry);
}

void WindowTabs::select(const std::string& tab_path) {
    // The caller's text may be `active` itself.
    const std::string selected = tab_path;
    const auto chosen = find_entry(entries, selected);
    if (selected == active || chosen == entries.end())
        return;
    if (const auto old = find_entry(entries, active); old != entries.end())
        app->toggle_state(old->tab_path, old->state);
    app->toggle_state(chosen->tab_path, chosen->state);
    previous = active;
    active = selected;
    // Hiding comes first, so that a panel of two tabs stays visible.
    for (const TabEntry& entry : entries)
        if (entry.tab_path != selected)
            app->set_visible(entry.panel_path, false);
    for (const TabEntry& entry : entries)
        if (entry.tab_path == selected)
            app->set_visible(entry.panel_path, true);
}

bool WindowTabs::remove(const std::string& tab_path) {
    const auto gone = find_entry(entries, tab_path);
    if (gone == entries.end())
        return false;
    const bool was_active = gone->tab_path == active;
    const bool panel_in_use =
        std::any_of(entries.begin(), entries.end(), [&](const TabEntry& entry) {
            return entry.tab_path == active && entry.tab_path != gone->tab_path &&
                   entry.panel_path == gone->panel_path;
        });
    if (!panel_in_use)
        app->set_visible(gone->panel_path, false);
    if (was_active) {
        app->toggle_state(gone->tab_path, gone->state);
        active.clear();
    }
    entries.erase(gone);
    return was_active;
}

} // namespace Corvel
