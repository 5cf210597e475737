#pragma once

namespace Corvel {

/// Whether videos can play here: Qt's GStreamer back end ends the process when one of GStreamer's
/// base plug-ins is missing, so they are asked for first. The first call may take as long as
/// loading them does; any thread may call.
bool media_back_end_usable();

} // namespace Corvel
