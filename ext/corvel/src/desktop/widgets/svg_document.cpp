#include "desktop/widgets/svg_document.h"

#include "desktop/media/less_motion.h"
#include "desktop/media/svg_tint.h"

#include <QHash>
#include <QTimer>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <map>

namespace Corvel {

namespace {

constexpr int FRAME_INTERVAL_MS = 16;

using Pictures = std::map<std::string, std::weak_ptr<QSvgRenderer>>; ///< by tint

/// The documents known to stand still, with their pictures as long as somebody shows them.
QHash<QString, Pictures>& known_stills() {
    static QHash<QString, Pictures> stills;
    return stills;
}

void add_still(const QString& text) {
    known_stills().removeIf([](const auto& entry) {
        return std::all_of(entry.value().begin(), entry.value().end(),
                           [](const auto& picture) { return picture.second.expired(); });
    });
    known_stills().insert(text, {});
}

std::shared_ptr<QSvgRenderer> still_picture(const QString& text, const std::string& tint) {
    std::weak_ptr<QSvgRenderer>& known = known_stills()[text][tint];
    std::shared_ptr<QSvgRenderer> picture = known.lock();
    if (!picture) {
        picture = std::make_shared<QSvgRenderer>();
        picture->load(recolor_svg(text.toStdString(), tint));
        known = picture;
    }
    return picture;
}

} // namespace

void SvgDocument::open_document(const QString& text, QWidget* owner,
                                const std::function<void()>& tick) {
    close_document();
    svg_text = text;
    if (text.isEmpty())
        return;
    if (known_stills().contains(text))
        return;
    animation = std::make_unique<SvgAnimation>(text.toStdString());
    if (!animation->is_animated()) {
        animation.reset();
        add_still(text);
        return;
    }
    clock.start();
    if (prefers_less_motion())
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
        picture_.reset();
    } else if (animation) {
        if (!picture_ || picture_.use_count() > 1)
            picture_ = std::make_shared<QSvgRenderer>();
        picture_->load(recolor_svg(animation->frame_at(present_time()), tint));
    } else {
        picture_ = still_picture(svg_text, tint);
    }
}

void SvgDocument::draw_picture(QPainter& painter, const QRectF& target) const {
    if (picture_)
        picture_->render(&painter, target);
}

// Where motion is unwelcome, what ends is shown as it ends, and what goes on for ever as it begins.
double SvgDocument::present_time() const {
    if (!prefers_less_motion())
        return double(clock.elapsed());
    return std::isfinite(animation->end()) ? animation->end() : 0;
}

} // namespace Corvel
