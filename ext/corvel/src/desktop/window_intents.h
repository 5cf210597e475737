#pragma once

#include <functional>
#include <string>

namespace Corvel {

class VBoxWidget;

/// Makes a box the window's title bar ("window:drag") or its edges ("window:resize"). Any other
/// intent leaves it an ordinary box. Sets the cursor.
void apply_box_intent(VBoxWidget& box, const std::string& intent);

/// What a click on a box with a "window:" intent does to the box's window; empty if the click is
/// the application's. An unknown "window:" intent gives an action that does nothing.
std::function<void()> window_action(VBoxWidget* box, const std::string& intent);

} // namespace Corvel
