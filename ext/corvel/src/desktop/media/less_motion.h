#pragma once

namespace Corvel {

/// Whether the person at the desktop asks for less motion. Asked once for each run: the variable
/// CORVEL_LESS_MOTION ("1" or "0") decides, otherwise "gtk-enable-animations" in the settings of
/// GTK 4 or 3, which the settings dialogs of several desktops write.
bool prefers_less_motion();

/// The same as a run that begins now would find it.
bool read_less_motion();

} // namespace Corvel
