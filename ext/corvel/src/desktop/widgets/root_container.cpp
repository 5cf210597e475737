#include "desktop/widgets/root_container.h"

#include <QEvent>

namespace Corvel {

RootContainer::RootContainer(QWidget* parent)
    : QWidget(parent) {}

RootContainer::~RootContainer() = default;

void RootContainer::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (on_width_changed)
        on_width_changed(width());
}

void RootContainer::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange && on_maximized_changed)
        on_maximized_changed(isMaximized());
}

} // namespace Corvel
