#pragma once

namespace Lumenfold::Builder {

/// From now on SIGINT, SIGTERM and SIGHUP are requests to come to an end; a second one ends the
/// process at once. A closed output is no signal any more but a failed write.
void watch_signals();

/// Whether somebody asked for the end. Work looks here between two versions or files, leaves things
/// in order and returns. Any thread may ask.
bool is_interrupted();

/// Asks for the end from within, as when the output was closed.
void request_interruption();

/// Ends the process by the signal that came, as shells expect; returns if none did.
void end_by_signal();

} // namespace Lumenfold::Builder
