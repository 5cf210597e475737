#include "desktop/widgets/svg_document.h"

#include "desktop/media/svg_tint.h"

#include <QTimer>
#include <QWidget>

namespace Corvel {

namespace {

constexpr int FRAME_INTERVAL_MS = 16;

} // namespace

void SvgDocument::open_document(const QString& text, QWidget* owner,
                                const std::function<void()>& tick) {
    close_document();
    svg_text = text;
    if (text.isEmpty())
        return;
    animation = std::make_unique<SvgAnimation>(text.toStdString());
    if (!animation->is_animated())
        return;
    clock.start();
    frame_timer = new QTimer(owner);
    QObject::connect(frame_timer, &QTimer::timeout, owner, [owner, tick] {
        // What nobody sees need not be drawn; the clock goes on.
        if (!owner->visibleRegion().isEmpty())
            tick();
    });
    frame_timer->start(FRAME_INTERVAL_MS);
}

void SvgDocument::close_document() {
    if (frame_timer) {
        frame_timer->stop();
        frame_timer->deleteLater();
        frame_timer = nullptr;
    }
    animation.reset();
    svg_text.clear();
}

void SvgDocument::load_frame(const std::string& tint) {
    if (svg_text.isEmpty()) {
        renderer.load(QByteArray());
        return;
    }
    const bool moving = animation && animation->is_animated();
    renderer.load(recolor_svg(
        moving ? animation->frame_at(double(clock.elapsed())) : svg_text.toStdString(), tint));
}

} // namespace Corvel
