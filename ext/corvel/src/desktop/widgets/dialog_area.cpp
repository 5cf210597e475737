#include "desktop/widgets/dialog_area.h"

#include "desktop/widgets/style_sheet.h"

#include <QEvent>
#include <QScreen>
#include <QScrollBar>

namespace Corvel {

namespace {

/// Kept free between a dialog and the edges of the screen, in pixels.
constexpr int MARGIN = 8;

QSize wanted_size(const QWidget& content) {
    QSize size =
        content.sizeHint().expandedTo(content.minimumSize()).boundedTo(content.maximumSize());
    if (content.hasHeightForWidth())
        size.setHeight(content.heightForWidth(size.width()));
    return size.expandedTo(content.minimumSize()).boundedTo(content.maximumSize());
}

} // namespace

DialogArea::DialogArea(QWidget* content) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    setWidget(content);
    content->setAutoFillBackground(false);
    style_scroll_bar(verticalScrollBar(), palette().color(QPalette::WindowText));
}

QSize DialogArea::sizeHint() const {
    if (!widget())
        return {0, 0};
    QSize size = wanted_size(*widget());
    const int room = screen()->availableGeometry().height() - 2 * MARGIN;
    if (size.height() > room)
        size = {size.width() + verticalScrollBar()->sizeHint().width(), room};
    return size;
}

QSize DialogArea::minimumSizeHint() const {
    return sizeHint();
}

bool DialogArea::eventFilter(QObject* watched, QEvent* event) {
    const bool handled = QScrollArea::eventFilter(watched, event);
    // The window follows its content.
    if (watched == widget() && event->type() == QEvent::LayoutRequest)
        updateGeometry();
    return handled;
}

} // namespace Corvel
