#pragma once

namespace Corvel {

class VideoWidget;
struct ViewState;

/// Keeps `video` among those that may play until it is destroyed.
void watch_video(ViewState& view, VideoWidget* video);

/// Decides 50 ms from now which video plays; any number of requests until then are one.
void schedule_video_check(ViewState& view);

} // namespace Corvel
