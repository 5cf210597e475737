#pragma once

#include <QColor>
#include <QString>

class QScrollBar;
class QWidget;

namespace Corvel {

/// Gives the widget the style sheet unless it has it: setting an equal one would polish it again.
void set_sheet(QWidget* widget, const QString& sheet);

/// " color: <text>;", empty for an empty text.
QString color_rule(const QString& color);

/// Makes a scroll bar slim and rounded, without arrows, its handle in a faint `color`.
void style_scroll_bar(QScrollBar* bar, const QColor& color);

} // namespace Corvel
