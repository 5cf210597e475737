#include "desktop/widgets/icon_widget.h"

#include "desktop/media/asset_paths.h"
#include "desktop/widgets/painting.h"

#include <QPainter>

namespace Corvel {

IconWidget::IconWidget(const std::string& name, QWidget* parent)
    : QWidget(parent)
    , source(name) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    open_source();
}

IconWidget::~IconWidget() = default;

void IconWidget::open_source() {
    open_document(load_icon_text(source), this, [this] { reload(); });
}

void IconWidget::reload() {
    load_frame(color);
    update();
}

void IconWidget::set_source(const std::string& name) {
    if (source == name)
        return;
    source = name;
    open_source();
    reload();
}

void IconWidget::set_color(const std::string& tint) {
    if (color == tint && has_picture())
        return;
    color = tint;
    reload();
}

void IconWidget::set_fit(const std::string& value) {
    if (fit == value)
        return;
    fit = value;
    update();
}

void IconWidget::set_rotation(double degrees) {
    if (rotation == degrees)
        return;
    rotation = degrees;
    update();
}

void IconWidget::set_opacity(double value) {
    if (opacity == value)
        return;
    opacity = value;
    update();
}

void IconWidget::paintEvent(QPaintEvent*) {
    if (!has_picture())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    apply_opacity(painter, opacity);
    const QRectF bounds = rect();
    QRectF target = bounds;
    if (!fit.empty() && !picture_size().isEmpty())
        target = fit_rect(bounds, picture_size(), fit == "Contain" || fit == "Aspect");
    if (!bounds.contains(target))
        painter.setClipRect(bounds);
    if (rotation != 0) {
        painter.translate(bounds.center());
        painter.rotate(rotation);
        painter.translate(-bounds.center());
    }
    draw_picture(painter, target);
}

} // namespace Corvel
