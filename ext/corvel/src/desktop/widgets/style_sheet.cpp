#include "desktop/widgets/style_sheet.h"

#include <QScrollBar>
#include <QWidget>

namespace Corvel {

namespace {

QString rgba(const QColor& color, double alpha) {
    return QStringLiteral("rgba(%1, %2, %3, %4)")
        .arg(color.red())
        .arg(color.green())
        .arg(color.blue())
        .arg(alpha);
}

} // namespace

void set_sheet(QWidget* widget, const QString& sheet) {
    if (widget->styleSheet() != sheet)
        widget->setStyleSheet(sheet);
}

QString color_rule(const QString& color) {
    return color.isEmpty() ? QString() : QStringLiteral(" color: ") + color + QLatin1Char(';');
}

void style_scroll_bar(QScrollBar* bar, const QColor& color) {
    static const QString pattern = QStringLiteral(
        "QScrollBar { background: transparent; border: none; margin: 0px; }"
        " QScrollBar:vertical { width: 10px; } QScrollBar:horizontal { height: 10px; }"
        " QScrollBar::handle { background: %1; border-radius: 3px; margin: 2px; }"
        " QScrollBar::handle:disabled { background: transparent; }"
        " QScrollBar::handle:vertical { min-height: 28px; }"
        " QScrollBar::handle:horizontal { min-width: 28px; }"
        " QScrollBar::handle:hover, QScrollBar::handle:pressed { background: %2; }"
        " QScrollBar::add-line, QScrollBar::sub-line { width: 0px; height: 0px; }"
        " QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }");
    set_sheet(bar, pattern.arg(rgba(color, 0.25), rgba(color, 0.45)));
}

} // namespace Corvel
