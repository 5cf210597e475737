#pragma once

namespace Corvel {

class CorvelApp;

/// Fills the `file_pick` slot with a file dialog that looks the same on every platform. The call
/// blocks in a nested event loop and calls back before it returns, with an empty path if the user
/// chose nothing.
void install_qt_file_pick(CorvelApp& app);

} // namespace Corvel
