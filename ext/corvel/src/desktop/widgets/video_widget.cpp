#include "desktop/widgets/video_widget.h"

#include "desktop/media/asset_paths.h"
#include "desktop/media/media_back_end.h"
#include "desktop/widgets/painting.h"

#include <QAudioOutput>
#include <QMediaPlayer>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollArea>
#include <QTimer>
#include <QVideoFrame>
#include <QVideoSink>

#include <cstdlib>

namespace Corvel {

VideoWidget::VideoWidget(const SharedStyle& node_style, QWidget* parent)
    : MediaWidget(parent) {
    apply_style(node_style);
    set_source(style->effective_source);
}

VideoWidget::~VideoWidget() {
    // The player would go on sending signals while the base class takes its children down.
    if (!player)
        return;
    player->disconnect(this);
    sink->disconnect(this);
    delete player;
    delete sink;
    delete audio;
}

void VideoWidget::apply_style(const SharedStyle& value) {
    style = value;
    autoplay = style->autoplay;
    loop = style->loop;
    controls = style->controls;
    if (audio)
        audio->setMuted(style->muted);
    update();
}

void VideoWidget::set_source(const std::string& value) {
    if (value == source)
        return;
    source = value;
    if (is_web_url(source)) {
        url = QUrl(QString::fromStdString(source));
    } else {
        const QString path = resolve_media_path(source);
        url = path.isEmpty() ? QUrl() : QUrl::fromLocalFile(path);
    }
    source_set = false;
    frame = QImage();
    if (player)
        player->stop();
    if (active)
        start();
    update();
}

QSize VideoWidget::natural_size() const {
    return {};
}

void VideoWidget::set_active(bool on) {
    if (active == on)
        return;
    active = on;
    if (!on) {
        if (player)
            player->pause();
    } else if (autoplay) {
        start();
    }
}

void VideoWidget::start() {
    if (url.isEmpty() || !media_back_end_usable())
        return;
    ensure_player();
    if (!source_set) {
        player->setSource(url);
        source_set = true;
    }
    player->play();
}

void VideoWidget::restart() {
    if (url.isEmpty())
        return;
    player->stop();
    player->setSource(QUrl());
    player->setSource(url);
    source_set = true;
    player->play();
}

void VideoWidget::ensure_player() {
    if (player)
        return;
    player = new QMediaPlayer(this);
    sink = new QVideoSink(this);
    audio = new QAudioOutput(this);
    player->setVideoSink(sink);
    player->setAudioOutput(audio);
    audio->setMuted(style->muted);
    connect(sink, &QVideoSink::videoFrameChanged, this, [this](const QVideoFrame& next) {
        if (next.isValid())
            frame = next.toImage();
        update();
    });
    connect(player, &QMediaPlayer::mediaStatusChanged, this,
            [this](QMediaPlayer::MediaStatus status) {
                if (loop && active && status == QMediaPlayer::EndOfMedia)
                    QTimer::singleShot(0, this, [this] { restart(); });
            });
    connect(player, &QMediaPlayer::errorOccurred, this, [this] { player->stop(); });
}

void VideoWidget::mousePressEvent(QMouseEvent* event) {
    if (!controls) {
        event->ignore();
        return;
    }
    event->accept();
    if (player && player->playbackState() == QMediaPlayer::PlayingState)
        player->pause();
    else
        start();
}

void VideoWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    apply_opacity(painter, opacity);
    const QPainterPath path = rounded_path(rect(), style);
    painter.setClipPath(path);
    paint_fill(painter, path, rect(), style->fill);
    if (!frame.isNull())
        painter.drawImage(fit_rect(rect(), frame.size(), style->fit == "Contain"), frame);
}

namespace {

QRect global_rect(const QWidget* widget) {
    return {widget->mapToGlobal(QPoint()), widget->size()};
}

/// The part of the screen through which the widget is seen: its scroll area's, else its window's.
QRect viewport_of(const QWidget* widget) {
    for (const QWidget* up = widget->parentWidget(); up; up = up->parentWidget())
        if (const auto* area = qobject_cast<const QScrollArea*>(up))
            return global_rect(area->viewport());
    return global_rect(widget->window());
}

} // namespace

void select_active_video(const std::vector<VideoWidget*>& videos) {
    VideoWidget* nearest = nullptr;
    int least = 0;
    for (VideoWidget* video : videos) {
        if (!video->isVisible())
            continue;
        const QRect area = global_rect(video);
        const QRect viewport = viewport_of(video);
        if (viewport.isEmpty() || !viewport.intersects(area))
            continue;
        const int distance = std::abs(area.center().y() - viewport.center().y());
        if (nearest && distance >= least)
            continue;
        nearest = video;
        least = distance;
    }
    for (VideoWidget* video : videos)
        video->set_active(video == nearest);
}

} // namespace Corvel
