#include "desktop/widgets/vbox_widget.h"

#include "desktop/widgets/accessible_box.h"
#include "desktop/widgets/focus_ring.h"
#include "desktop/widgets/painting.h"

#include <QAccessible>
#include <QFocusEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPen>
#include <QToolTip>
#include <QWindow>

namespace Corvel {

namespace {

/// How near to an edge a press resizes the window, in pixels.
constexpr int RESIZE_REACH = 8;

Qt::Edges edges_at(const QWidget& box, QPoint at) {
    Qt::Edges edges;
    if (at.x() <= RESIZE_REACH)
        edges |= Qt::LeftEdge;
    else if (at.x() >= box.width() - RESIZE_REACH)
        edges |= Qt::RightEdge;
    if (at.y() <= RESIZE_REACH)
        edges |= Qt::TopEdge;
    else if (at.y() >= box.height() - RESIZE_REACH)
        edges |= Qt::BottomEdge;
    return edges;
}

Qt::CursorShape cursor_for(Qt::Edges edges) {
    if (edges == (Qt::LeftEdge | Qt::TopEdge) || edges == (Qt::RightEdge | Qt::BottomEdge))
        return Qt::SizeFDiagCursor;
    if (edges == (Qt::RightEdge | Qt::TopEdge) || edges == (Qt::LeftEdge | Qt::BottomEdge))
        return Qt::SizeBDiagCursor;
    if (edges & (Qt::LeftEdge | Qt::RightEdge))
        return Qt::SizeHorCursor;
    if (edges & (Qt::TopEdge | Qt::BottomEdge))
        return Qt::SizeVerCursor;
    return Qt::ArrowCursor;
}

void tell_change(VBoxWidget* box, const QAccessible::State& changed) {
    if (!QAccessible::isActive())
        return;
    QAccessibleStateChangeEvent event(box, changed);
    QAccessible::updateAccessibility(&event);
}

bool is_press_key(const QKeyEvent& event) {
    const bool plain = (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const int key = event.key();
    return plain && (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter ||
                     key == Qt::Key_Select);
}

} // namespace

VBoxWidget::VBoxWidget(QWidget* parent)
    : QWidget(parent) {
    install_accessible_boxes();
}

VBoxWidget::~VBoxWidget() = default;

void VBoxWidget::set_style(const SharedStyle& value) {
    style = value;
    update();
}

void VBoxWidget::set_opacity(double value) {
    if (opacity == value)
        return;
    opacity = value;
    update();
}

void VBoxWidget::set_checked(bool on) {
    if (checked == on)
        return;
    checked = on;
    QAccessible::State changed;
    changed.checked = true;
    tell_change(this, changed);
}

void VBoxWidget::set_standing(bool is_selected, bool is_disabled) {
    if (selected == is_selected && disabled == is_disabled)
        return;
    QAccessible::State changed;
    changed.selected = selected != is_selected;
    changed.disabled = disabled != is_disabled;
    selected = is_selected;
    disabled = is_disabled;
    tell_change(this, changed);
}

void VBoxWidget::set_pressable() {
    setFocusPolicy(Qt::TabFocus);
}

void VBoxWidget::show_ring(bool on) {
    if (on && !ring_) {
        ring_ = new FocusRing(this);
    } else if (ring_) {
        ring_->setVisible(on);
        ring_->raise();
    }
}

void VBoxWidget::click() {
    // The handler may replace itself, or be the end of this widget.
    if (const auto handler = on_click)
        handler();
}

bool VBoxWidget::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && on_click) {
        const QString words = words_of_wordless(*this);
        if (!words.isEmpty()) {
            QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), words, this);
            return true;
        }
    }
    return QWidget::event(event);
}

void VBoxWidget::keyPressEvent(QKeyEvent* event) {
    if (!on_click || !hasFocus() || !is_press_key(*event))
        return QWidget::keyPressEvent(event);
    event->accept();
    if (!event->isAutoRepeat())
        click();
}

void VBoxWidget::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    show_ring(true);
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
        scroll_into_view(this);
}

void VBoxWidget::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    show_ring(false);
}

void VBoxWidget::mousePressEvent(QMouseEvent* event) {
    if (on_click) {
        event->accept();
        click();
        return;
    }
    QWindow* handle = window()->windowHandle();
    if (window_resize && handle) {
        const Qt::Edges edges = edges_at(*this, event->position().toPoint());
        if (edges) {
            handle->startSystemResize(edges);
            event->accept();
            return;
        }
    }
    if (window_drag && handle) {
        handle->startSystemMove();
        event->accept();
        return;
    }
    event->ignore();
}

void VBoxWidget::mouseMoveEvent(QMouseEvent* event) {
    if (window_resize && event->buttons() == Qt::NoButton)
        setCursor(cursor_for(edges_at(*this, event->position().toPoint())));
    QWidget::mouseMoveEvent(event);
}

void VBoxWidget::leaveEvent(QEvent* event) {
    if (window_resize)
        unsetCursor();
    QWidget::leaveEvent(event);
}

void VBoxWidget::paintEvent(QPaintEvent*) {
    const bool border = style->border_thickness > 0 && !style->border_fill.text.empty();
    if (!border && style->fill.text.empty())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    apply_opacity(painter, opacity);
    const double thickness = style->border_thickness;
    const double inset = thickness / 2;
    const QRectF area = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
    const QPainterPath path = rounded_path(area, style);
    paint_fill(painter, path, area, style->fill);
    if (!border)
        return;
    const QBrush brush = fill_brush(area, style->border_fill);
    if (brush.style() == Qt::NoBrush)
        return;
    painter.setPen(QPen(brush, thickness));
    painter.drawPath(path);
}

void VBoxWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (ring_)
        ring_->setGeometry(rect());
    if (const auto handler = on_resize)
        handler();
}

} // namespace Corvel
