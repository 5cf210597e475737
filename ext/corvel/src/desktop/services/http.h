#pragma once

namespace Corvel {

class CorvelApp;

/// Fills the `http` slot. A transfer that stalls for 30 seconds fails; redirects are followed.
/// Replies come on the main thread, each followed by `on_async_change`. Call once, with the
/// application object outliving the event loop.
void install_qt_http(CorvelApp& app);

} // namespace Corvel
