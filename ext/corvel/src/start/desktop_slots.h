#pragma once

namespace Corvel {

class CorvelApp;

/// Fills the slots that need nothing but the application object: `open_url`, `copy_text`,
/// `save_text_file`, `run_after` and `post`, and names the data folder. Callbacks that come later
/// are followed by `on_async_change`. Needs a QApplication that outlives `app`'s last event.
void install_desktop_slots(CorvelApp& app);

} // namespace Corvel
