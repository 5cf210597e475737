#include "desktop/window_intents.h"

#include "desktop/widgets/vbox_widget.h"

#include <QCursor>
#include <QWidget>

namespace Corvel {

void apply_box_intent(VBoxWidget& box, const std::string& intent) {
    box.window_drag = intent == "window:drag";
    box.window_resize = intent == "window:resize";
    // Without a cursor of its own a box would take over that of a resizer around it.
    if (box.window_resize)
        box.setMouseTracking(true);
    else
        box.setCursor(Qt::ArrowCursor);
}

std::function<void()> window_action(VBoxWidget* box, const std::string& intent) {
    if (!intent.starts_with("window:"))
        return {};
    if (intent == "window:minimize")
        return [box] { box->window()->showMinimized(); };
    if (intent == "window:maximize")
        return [box] {
            QWidget* window = box->window();
            if (window->isMaximized())
                window->showNormal();
            else
                window->showMaximized();
        };
    if (intent == "window:close")
        return [box] { box->window()->close(); };
    return [] {};
}

} // namespace Corvel
