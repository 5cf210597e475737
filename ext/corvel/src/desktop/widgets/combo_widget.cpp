#include "desktop/widgets/combo_widget.h"

#include "desktop/widgets/combo_list.h"
#include "desktop/widgets/focus_ring.h"
#include "desktop/widgets/painting.h"
#include "desktop/widgets/sizing.h"
#include "desktop/widgets/style_sheet.h"
#include "desktop/widgets/wrap_label.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPen>
#include <QPolygonF>

#include <algorithm>

namespace Corvel {

namespace {

/// Room for the chevron at the right end.
int chevron_width(double font_size) {
    return whole_pixels(font_size * 1.2 + 0.5);
}

/// The fill as one plain colour, empty if it is none.
QString plain_color(const Fill& fill) {
    return fill.gradient ? QString() : QString::fromStdString(fill.text);
}

QString sheet_for(const NodeStyle& style, const QString& text_color) {
    QString sheet = QLatin1String("QComboBox { background: transparent; border: none;") +
                    color_rule(text_color) +
                    QLatin1String(" } QComboBox::drop-down { border: none; width: 0px; }"
                                  " QComboBox { combobox-popup: 0; }");
    const QString background = plain_color(style.fill);
    if (background.isEmpty() || QColor::fromString(background).alpha() == 0)
        return sheet;
    const QString border = plain_color(style.border_fill);
    sheet += QLatin1String(" QComboBox QAbstractItemView { background: ") + background +
             QLatin1String("; border: 1px solid ") + (border.isEmpty() ? text_color : border) +
             QLatin1Char(';') + color_rule(text_color) + QLatin1String(" }");
    return sheet;
}

} // namespace

ComboWidget::ComboWidget(QWidget* parent)
    : VBoxWidget(parent)
    , combo(new ListCombo(this)) {
    combo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    combo->setCursor(Qt::PointingHandCursor);
    combo->setFocusPolicy(Qt::StrongFocus);
    combo->installEventFilter(this);
    connect(combo, &QComboBox::activated, this, [this](int index) {
        const auto handler = on_select;
        if (handler && index >= 0)
            handler(combo->itemData(index).toString().toStdString());
    });
}

ComboWidget::~ComboWidget() = default;

bool ComboWidget::eventFilter(QObject* watched, QEvent* event) {
    if (watched != combo)
        return VBoxWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::Wheel:
        // Turning the wheel scrolls the panel, whatever list happens to pass under the pointer.
        event->ignore();
        return true;
    case QEvent::KeyPress:
        return take_key(static_cast<QKeyEvent*>(event));
    case QEvent::FocusIn: {
        show_ring(true);
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason)
            scroll_into_view(this);
        break;
    }
    case QEvent::FocusOut:
        show_ring(static_cast<QFocusEvent*>(event)->reason() == Qt::PopupFocusReason);
        break;
    case QEvent::Resize:
        // The control shrinks itself to its contents some time after these have changed.
        lay_out();
        break;
    default:
        break;
    }
    return VBoxWidget::eventFilter(watched, event);
}

/// Return opens the list as Space does. What is held with Ctrl is meant for the window, not for the
/// search by first letters.
bool ComboWidget::take_key(QKeyEvent* event) {
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        event->ignore();
        return true;
    }
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return false;
    event->accept();
    if (!event->isAutoRepeat())
        combo->showPopup();
    return true;
}

void ComboWidget::show_value(const std::string& value) {
    const int index =
        combo->findData(QString::fromStdString(value), Qt::UserRole, Qt::MatchCaseSensitive);
    if (index >= 0 && index != combo->currentIndex())
        combo->setCurrentIndex(index);
}

void apply_combo_style(ComboWidget* box, const SharedStyle& style,
                       const std::vector<ComboItem>& items, const std::string& selected) {
    box->set_style(style);
    const int border = whole_pixels(style->border_thickness);
    box->insets =
        QMargins(whole_pixels(style->padding_left), whole_pixels(style->padding_top),
                 whole_pixels(style->padding_right), whole_pixels(style->padding_bottom)) +
        border;
    box->text_color = QString::fromStdString(style->text_color);
    QComboBox* combo = box->combo;
    set_sheet(combo, sheet_for(style, box->text_color));
    box->font_size = style->font_size > 0 ? style->font_size : 14.0;
    QFont font = box->font();
    font.setPixelSize(whole_pixels(box->font_size + 0.5));
    set_line_font(font, style->font_family);
    combo->setFont(font);
    combo->setAccessibleName(box->objectName());
    if (items != box->items) {
        box->items = items;
        combo->clear();
        for (const ComboItem& item : items)
            combo->addItem(QString::fromStdString(item.label), QString::fromStdString(item.value));
    }
    box->show_value(selected);
    box->updateGeometry();
    box->lay_out();
}

void ComboWidget::lay_out() {
    const QRect inner = rect().marginsRemoved(insets);
    combo->setGeometry(inner.left(), inner.top(),
                       std::max(0, inner.width() - chevron_width(font_size)),
                       std::max(0, inner.height()));
    combo->view()->setMinimumWidth(width());
}

QSize ComboWidget::sizeHint() const {
    return combo->sizeHint().grownBy(insets);
}

QSize ComboWidget::minimumSizeHint() const {
    return {0, sizeHint().height()};
}

void ComboWidget::mousePressEvent(QMouseEvent* event) {
    event->accept();
    combo->showPopup();
}

void ComboWidget::paintEvent(QPaintEvent* event) {
    VBoxWidget::paintEvent(event);
    QColor color = QColor::fromString(text_color);
    if (!color.isValid())
        color = palette().color(QPalette::WindowText);
    color.setAlphaF(0.5F);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    apply_opacity(painter, opacity);
    const double s = font_size * 0.22;
    const double cx = width() - insets.right() - chevron_width(font_size) * 0.5;
    const double cy = height() / 2.0;
    painter.setPen(
        QPen(color, std::max(font_size / 9, 1.5), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF({{cx - s, cy - s / 2}, {cx, cy + s / 2}, {cx + s, cy - s / 2}}));
}

void ComboWidget::resizeEvent(QResizeEvent* event) {
    VBoxWidget::resizeEvent(event);
    lay_out();
}

} // namespace Corvel
