#include "desktop/widgets/media_widget.h"

#include "desktop/widgets/sizing.h"

namespace Corvel {

MediaWidget::MediaWidget(QWidget* parent)
    : QWidget(parent) {}

int MediaWidget::heightForWidth(int width) const {
    return aspect > 0 ? whole_pixels(width / aspect + 0.5) : QWidget::heightForWidth(width);
}

bool MediaWidget::hasHeightForWidth() const {
    return aspect > 0;
}

void MediaWidget::set_opacity(double value) {
    if (opacity == value)
        return;
    opacity = value;
    update();
}

} // namespace Corvel
