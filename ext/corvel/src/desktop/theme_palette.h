#pragma once

namespace Corvel {

struct ViewState;

/// Gives the application's palette the colours of the theme in force, so that what Qt draws by
/// itself (menus, lists, selections, tool tips, file dialogs) looks like the rest. Does nothing as
/// long as these colours stay the same.
void follow_theme_palette(ViewState& view);

} // namespace Corvel
