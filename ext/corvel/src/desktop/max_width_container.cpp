#include "desktop/max_width_container.h"

#include "desktop/layout_math.h"

#include <QEvent>
#include <QSizePolicy>

#include <algorithm>

namespace Corvel {

MaxWidthContainer::MaxWidthContainer(QWidget* content, int width_limit, QWidget* parent)
    : QWidget(parent)
    , child(content)
    , max_width(width_limit) {
    child->setParent(this);
    child->installEventFilter(this);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

MaxWidthContainer::~MaxWidthContainer() = default;

void MaxWidthContainer::set_max_width(int width_limit) {
    if (max_width == width_limit)
        return;
    max_width = width_limit;
    if (bounded)
        setMaximumWidth(max_width);
    updateGeometry();
    place();
}

void MaxWidthContainer::set_bounded(bool on) {
    if (bounded == on)
        return;
    bounded = on;
    setMaximumWidth(on ? max_width : QWIDGETSIZE_MAX);
    setSizePolicy(on ? QSizePolicy::Preferred : QSizePolicy::Expanding, QSizePolicy::Preferred);
    updateGeometry();
    place();
}

void MaxWidthContainer::place() {
    if (!child)
        return;
    const Area area = centred_area(width(), height(), max_width);
    child->setGeometry(area.x, area.y, area.width, area.height);
}

void MaxWidthContainer::release() {
    child->removeEventFilter(this);
    child = nullptr;
}

// A leaf has no layout of its own, so a change of its hint is announced to us and not to it.
bool MaxWidthContainer::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        place();
    }
    return QWidget::event(event);
}

bool MaxWidthContainer::eventFilter(QObject* watched, QEvent* event) {
    if (watched == child && event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        place();
    }
    return QWidget::eventFilter(watched, event);
}

void MaxWidthContainer::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    place();
}

void MaxWidthContainer::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    place();
}

// A fixed or collapsed child is not its hint's size.
QSize MaxWidthContainer::within_limits(QSize size) const {
    return size.boundedTo(child->maximumSize()).expandedTo(child->minimumSize());
}

QSize MaxWidthContainer::sizeHint() const {
    QSize hint = within_limits(child->sizeHint());
    if (hint.width() > max_width && hasHeightForWidth())
        hint.setHeight(heightForWidth(max_width));
    hint.setWidth(bounded ? max_width : std::min(hint.width(), max_width));
    return hint;
}

QSize MaxWidthContainer::minimumSizeHint() const {
    return {0, within_limits(child->minimumSizeHint()).height()};
}

bool MaxWidthContainer::hasHeightForWidth() const {
    return child->hasHeightForWidth();
}

int MaxWidthContainer::heightForWidth(int width) const {
    const int used = std::min(width, max_width);
    return within_limits({used, child->heightForWidth(used)}).height();
}

} // namespace Corvel
