#pragma once

class QKeyEvent;
class QWidget;

namespace Corvel {

struct ViewState;

/// The keys of the whole window, as presses of what stands on the screen. Ctrl+S presses the "Save
/// Button" nearest around the focus in `window`. In the main window Ctrl+Tab, Ctrl+Shift+Tab and
/// Ctrl+1 to 9 press a tab of the list "leftTabs", Ctrl+W the "Close Button" of the active one.
/// False if the key is none of these.
bool press_window_key(ViewState& view, QWidget* window, const QKeyEvent& event);

} // namespace Corvel
