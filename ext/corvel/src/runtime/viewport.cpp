#include "runtime/app_state.h"

#include <cmath>

namespace Corvel {
namespace {

constexpr double NARROW_WIDTH = 600; ///< the widest window in the state "Narrow"
constexpr double MEDIUM_WIDTH = 900; ///< the widest window in the state "Medium"
constexpr double SCROLL_THRESHOLD = 30;

/// Adds or removes `state`; whether that changed anything.
bool put_state(std::set<std::string>& states, const std::string& state, bool on) {
    return on ? states.insert(state).second : states.erase(state) > 0;
}

} // namespace

bool CorvelApp::set_viewport_width(double w) {
    std::set<std::string>& states = state_->global_states;
    const bool narrow = w <= NARROW_WIDTH;
    const bool medium = !narrow && w <= MEDIUM_WIDTH;
    if (narrow == states.contains("Narrow") && medium == states.contains("Medium"))
        return false;
    put_state(states, "Narrow", narrow);
    put_state(states, "Medium", medium);
    if (!narrow) {
        states.erase("ControlsHidden");
        state_->scroll_accumulator = 0;
    }
    return true;
}

bool CorvelApp::set_viewport_height(double h) {
    const double rounded = std::round(h);
    if (rounded == state_->viewport_height)
        return false;
    state_->viewport_height = rounded;
    return state_->uses_viewport_height;
}

bool CorvelApp::set_maximized(bool on) {
    return put_state(state_->global_states, "Maximized", on);
}

bool CorvelApp::set_controls_hidden(bool on) {
    return put_state(state_->global_states, "ControlsHidden", on);
}

bool CorvelApp::accumulate_scroll(double delta) {
    if (!state_->global_states.contains("Narrow"))
        return false;
    state_->scroll_accumulator += delta;
    const bool down = state_->scroll_accumulator > SCROLL_THRESHOLD;
    const bool up = state_->scroll_accumulator < -SCROLL_THRESHOLD;
    if (!down && !up)
        return false;
    state_->scroll_accumulator = 0;
    return set_controls_hidden(down);
}

} // namespace Corvel
