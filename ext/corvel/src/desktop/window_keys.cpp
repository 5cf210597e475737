#include "desktop/window_keys.h"

#include "desktop/desktop_view_p.h"
#include "desktop/widgets/root_container.h"
#include "desktop/widgets/vbox_widget.h"
#include "runtime/corvel_app.h"

#include <QBoxLayout>
#include <QKeyEvent>

#include <algorithm>
#include <vector>

namespace Corvel {

namespace {

constexpr const char* TABS = "List:leftTabs";
constexpr const char* CLOSE_BUTTON = "/Close Button";

void save(QWidget* window) {
    QWidget* focus = window->focusWidget();
    for (QWidget* around = focus ? focus : window; around; around = around->parentWidget()) {
        const auto boxes = around->findChildren<VBoxWidget*>(QStringLiteral("Save Button"));
        for (VBoxWidget* box : boxes)
            if (box->isVisible() && box->on_click)
                return box->click();
        if (around == window)
            return;
    }
}

/// The tabs in the order on the screen.
std::vector<const DNode*> tabs_of(const ViewState& view) {
    std::vector<const DNode*> tabs;
    for (const auto& [path, strip] : view.nodes) {
        if (!strip.layout || !strip.box || strip.box->style->bind != TABS)
            continue;
        for (int index = 0; index < strip.layout->count(); ++index) {
            const DNode* tab = view.find_dnode_by_widget(strip.layout->itemAt(index)->widget());
            if (tab && tab->box && tab->box->on_click)
                tabs.push_back(tab);
        }
        break;
    }
    return tabs;
}

int active_tab(const ViewState& view, const std::vector<const DNode*>& tabs) {
    const auto active = std::ranges::find_if(
        tabs, [&](const DNode* tab) { return view.app->has_state(*tab->path, "Active"); });
    return active == tabs.end() ? -1 : int(active - tabs.begin());
}

void press(const std::vector<const DNode*>& tabs, int index) {
    if (index >= 0 && index < int(tabs.size()))
        tabs[std::size_t(index)]->box->click();
}

void step(const ViewState& view, int by) {
    const auto tabs = tabs_of(view);
    const int count = int(tabs.size());
    const int active = active_tab(view, tabs);
    if (count > 0)
        press(tabs, active < 0 ? (by > 0 ? 0 : count - 1) : (active + by + count) % count);
}

void close_active(ViewState& view) {
    const auto tabs = tabs_of(view);
    const int active = active_tab(view, tabs);
    if (active < 0)
        return;
    const DNode* button = view.find(*tabs[std::size_t(active)]->path + CLOSE_BUTTON);
    if (button && button->box)
        button->box->click();
}

bool press_tab_key(ViewState& view, const QKeyEvent& event) {
    const int key = event.key();
    const bool shifted = event.modifiers().testFlag(Qt::ShiftModifier);
    if (key == Qt::Key_Tab || key == Qt::Key_Backtab)
        step(view, shifted || key == Qt::Key_Backtab ? -1 : 1);
    else if (shifted)
        return false;
    else if (key == Qt::Key_W)
        close_active(view);
    else if (key >= Qt::Key_1 && key <= Qt::Key_9)
        press(tabs_of(view), key - Qt::Key_1);
    else
        return false;
    return true;
}

} // namespace

bool press_window_key(ViewState& view, QWidget* window, const QKeyEvent& event) {
    const Qt::KeyboardModifiers held = event.modifiers() & ~Qt::KeypadModifier;
    if ((held & ~Qt::ShiftModifier) != Qt::ControlModifier)
        return false;
    if (event.key() != Qt::Key_S || held != Qt::ControlModifier)
        return window == view.root && press_tab_key(view, event);
    if (!event.isAutoRepeat())
        save(window);
    return true;
}

} // namespace Corvel
