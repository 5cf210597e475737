#include "desktop/widgets/sizing.h"

#include "desktop/widgets/icon_widget.h"
#include "desktop/widgets/media_widget.h"

#include <QSizePolicy>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace Corvel {

namespace {

void set_width(QWidget* widget, int pixels) {
    if (pixels > 0) {
        widget->setFixedWidth(pixels);
        return;
    }
    widget->setMinimumWidth(0);
    widget->setMaximumWidth(QWIDGETSIZE_MAX);
}

void set_height(QWidget* widget, int pixels) {
    if (pixels > 0) {
        widget->setFixedHeight(pixels);
        return;
    }
    widget->setMinimumHeight(0);
    widget->setMaximumHeight(QWIDGETSIZE_MAX);
}

int rounded_pixels(double value) {
    return value > 0 ? whole_pixels(value + 0.5) : 0;
}

/// Fixes the given sides; one left at 0 follows the other by the proportions of `natural`.
void apply_natural_size(QWidget* widget, const NodeStyle& style, QSize natural) {
    double width = style.width;
    double height = style.height;
    if (natural.width() > 0 && natural.height() > 0) {
        const double ratio = double(natural.width()) / natural.height();
        if (width > 0 && height <= 0)
            height = width / ratio;
        else if (height > 0 && width <= 0)
            width = ratio * height;
    }
    set_width(widget, rounded_pixels(width));
    set_height(widget, rounded_pixels(height));
}

void set_aspect(MediaWidget* media, double aspect) {
    if (media->aspect == aspect)
        return;
    media->aspect = aspect;
    QSizePolicy policy = media->sizePolicy();
    policy.setHeightForWidth(aspect > 0);
    media->setSizePolicy(policy);
    media->updateGeometry();
}

} // namespace

int whole_pixels(double value) {
    if (std::isnan(value))
        return 0;
    return int(std::clamp(value, double(-QWIDGETSIZE_MAX), double(QWIDGETSIZE_MAX)));
}

void apply_fixed_size(QWidget* widget, const NodeStyle& style) {
    set_width(widget, whole_pixels(style.width));
    set_height(widget, whole_pixels(style.height));
}

void apply_icon_size(IconWidget* icon, const NodeStyle& style) {
    apply_natural_size(icon, style, icon->picture_size());
}

void apply_media_size(MediaWidget* media, const NodeStyle& style) {
    set_aspect(media, style.aspect_ratio);
    if (style.aspect_ratio > 0) {
        set_width(media, rounded_pixels(style.width));
        set_height(media, 0);
    } else if (style.fit == "Aspect") {
        apply_natural_size(media, style, media->natural_size());
    } else {
        apply_fixed_size(media, style);
    }
}

} // namespace Corvel
