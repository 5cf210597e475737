#include "desktop/widgets/svg_document.h"

#include "desktop/media/less_motion.h"
#include "desktop/media/svg_tint.h"

#include <QTimer>
#include <QWidget>

#include <cmath>

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
    clock.start();
    if (!animation->is_animated() || prefers_less_motion())
        return;
    frame_timer = new QTimer(owner);
    QObject::connect(frame_timer, &QTimer::timeout, owner, [this, owner, tick] {
        // What nobody sees need not be drawn; the clock goes on.
        if (owner->visibleRegion().isEmpty())
            return;
        const bool is_last = double(clock.elapsed()) >= animation->end();
        QTimer* const timer = frame_timer;
        tick();
        if (is_last && timer == frame_timer)
            frame_timer->stop();
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
    renderer.load(
        recolor_svg(moving ? animation->frame_at(present_time()) : svg_text.toStdString(), tint));
}

// Where motion is unwelcome, what ends is shown as it ends, and what goes on for ever as it begins.
double SvgDocument::present_time() const {
    if (!prefers_less_motion())
        return double(clock.elapsed());
    return std::isfinite(animation->end()) ? animation->end() : 0;
}

} // namespace Corvel
