#pragma once

namespace Corvel {

/// Loads the platform's multimedia back end on a thread of its own, for at most 1.5 seconds, so
/// that the first video does not stall the window. Nothing if the back end cannot be used here.
/// Quitting ends it early.
void start_media_warmup();

} // namespace Corvel
