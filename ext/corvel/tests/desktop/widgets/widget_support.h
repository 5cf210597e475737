#pragma once

#include "runtime/render_node.h"

#include <QApplication>
#include <QImage>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>

#include <string>

/// What the widget paints, over transparent ground.
inline QImage picture_of(QWidget& widget) {
    QImage image(widget.size(), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

/// The colour at a place as "#aarrggbb".
inline std::string color_at(const QImage& image, int x, int y) {
    return image.pixelColor(x, y).name(QColor::HexArgb).toStdString();
}
inline std::string color_at(QWidget& widget, int x, int y) {
    return color_at(picture_of(widget), x, y);
}

/// One step of the wheel over the middle of the widget, as from the user: it travels to the
/// parents until one takes it.
inline void turn_wheel_over(QWidget& widget) {
    const QPointF at = widget.rect().center();
    QWheelEvent wheel(at, widget.mapToGlobal(at), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&wheel);
    qApp->notify(&widget, &wheel);
}
