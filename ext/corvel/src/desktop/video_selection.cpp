#include "desktop/video_selection.h"

#include "desktop/desktop_view_p.h"
#include "desktop/widgets/root_container.h"
#include "desktop/widgets/video_widget.h"

#include <QTimer>

namespace Corvel {

namespace {
constexpr int CHECK_DELAY_MS = 50;
}

void watch_video(ViewState& view, VideoWidget* video) {
    view.videos.all.push_back(video);
    QObject::connect(video, &QObject::destroyed, view.root,
                     [&view, video] { std::erase(view.videos.all, video); });
}

void schedule_video_check(ViewState& view) {
    if (view.videos.check_pending || view.videos.all.empty() || !view.root)
        return;
    view.videos.check_pending = true;
    QTimer::singleShot(CHECK_DELAY_MS, view.root, [&view] {
        view.videos.check_pending = false;
        select_active_video(view.videos.all);
    });
}

} // namespace Corvel
