#include "desktop/widgets/focus_ring.h"

#include "desktop/widgets/painting.h"
#include "desktop/widgets/vbox_widget.h"

#include <QPainter>
#include <QPen>
#include <QScrollArea>

#include <algorithm>

namespace Corvel {

namespace {

constexpr double RING = 2; ///< thickness, in pixels
constexpr double LINE = 1; ///< of the line inside
constexpr double SMALLEST_RADIUS = 4;
/// Room shown around a widget that is scrolled to.
constexpr int MARGIN = 12;

} // namespace

FocusRing::FocusRing(VBoxWidget* box)
    : QWidget(box)
    , box_(box) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    setGeometry(box->rect());
    raise();
    show();
}

void FocusRing::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double radius = std::max(box_->style->radius_top_left, SMALLEST_RADIUS);
    const auto draw = [&](double inset, double thickness, QPalette::ColorRole role) {
        const double middle = inset + thickness / 2;
        painter.setPen(QPen(palette().color(role), thickness));
        painter.drawRoundedRect(QRectF(rect()).adjusted(middle, middle, -middle, -middle),
                                std::max(radius - middle, 1.0), std::max(radius - middle, 1.0));
    };
    draw(0, RING, QPalette::WindowText);
    draw(RING, LINE, QPalette::Window);
}

void scroll_into_view(QWidget* widget) {
    for (QWidget* above = widget->parentWidget(); above; above = above->parentWidget())
        if (auto* area = qobject_cast<QScrollArea*>(above))
            area->ensureWidgetVisible(widget, MARGIN, MARGIN);
}

} // namespace Corvel
