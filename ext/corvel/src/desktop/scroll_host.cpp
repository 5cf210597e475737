#include "desktop/scroll_host.h"

#include "desktop/desktop_view_p.h"
#include "desktop/overlays.h"
#include "desktop/strip.h"
#include "desktop/video_selection.h"
#include "desktop/widgets/painting.h"
#include "desktop/widgets/root_container.h"
#include "desktop/widgets/style_sheet.h"
#include "desktop/widgets/vbox_widget.h"
#include "runtime/corvel_app.h"

#include <QFrame>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <utility>

namespace Corvel {

namespace {

void scrolled(ViewState& view, QScrollBar* bar, int value) {
    const int delta = value - std::exchange(view.bars.scroll_values[bar], value);
    // A render now could move the very bar that is sliding.
    if (delta != 0 && !any_overlay_animating(view) && view.app->accumulate_scroll(delta))
        view.render_now();
    schedule_video_check(view);
}

void watch_bar(ViewState& view, QScrollBar* bar) {
    view.bars.scroll_values[bar] = bar->value();
    QObject::connect(bar, &QScrollBar::valueChanged, view.root,
                     [&view, bar](int value) { scrolled(view, bar, value); });
}

/// The theme's colour for the handles, a grey that shows on any surface if it has none.
QColor handle_color(const ViewState& view) {
    const QColor color = color_of(view.bars.color);
    return color.isValid() ? color : QColor(Qt::gray);
}

void add_themed_bar(ViewState& view, QScrollBar* bar) {
    view.bars.themed.insert(bar);
    style_scroll_bar(bar, handle_color(view));
    QObject::connect(bar, &QObject::destroyed, view.root, [&view, bar] {
        view.bars.themed.erase(bar);
        view.bars.scroll_values.erase(bar);
    });
}

constexpr int BAR_WIDTH = 10; ///< as the bars' style sheet has it

Qt::ScrollBarPolicy policy_of(bool used) {
    return used ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
}

} // namespace

int bar_room(const NodeStyle& style) {
    return style.layout_scroll == "Vertical" && style.padding_right >= BAR_WIDTH ? BAR_WIDTH : 0;
}

QWidget* make_scroll_host(ViewState& view, DNode& dnode, const NodeStyle& style) {
    const bool both = style.layout_scroll == "Both";
    const bool upright = both || style.layout_scroll == "Vertical";
    const bool sideways = both || style.layout_scroll == "Horizontal";
    auto* frame = new QVBoxLayout(dnode.box);
    frame->setContentsMargins(0, 0, 0, 0);
    QScrollArea* area = upright ? new QScrollArea(dnode.box) : new StripArea(dnode.box);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    // A press on a button in the area must not take the focus from the field being edited.
    area->setFocusPolicy(Qt::NoFocus);
    area->viewport()->setAutoFillBackground(false);
    area->setVerticalScrollBarPolicy(bar_room(style) > 0 ? Qt::ScrollBarAlwaysOn
                                                         : policy_of(upright));
    area->setHorizontalScrollBarPolicy(policy_of(sideways));
    add_themed_bar(view, area->verticalScrollBar());
    add_themed_bar(view, area->horizontalScrollBar());
    auto* content = new QWidget;
    content->setAutoFillBackground(false);
    area->setWidget(content);
    // The area turns this on for the widget that it is given.
    content->setAutoFillBackground(false);
    frame->addWidget(area);
    dnode.arrangement.scroll_area = area;
    if (upright)
        watch_bar(view, area->verticalScrollBar());
    else
        watch_strip(view, area);
    return content;
}

void drop_scroll_host(ViewState& view, DNode& dnode) {
    QScrollArea* area = std::exchange(dnode.arrangement.scroll_area, nullptr);
    if (!area)
        return;
    QScrollBar* bar = area->verticalScrollBar();
    bar->disconnect(view.root);
    view.bars.scroll_values.erase(bar);
    view.bars.themed.erase(bar);
    view.bars.themed.erase(area->horizontalScrollBar());
    view.bars.strips.erase(area);
    // One of its bars may be the sender of the signal that led here.
    area->hide();
    area->setParent(nullptr);
    area->deleteLater();
}

void theme_scroll_bars(ViewState& view) {
    const auto theme = view.app->themes().find(view.app->active_theme());
    const std::string& color = theme == view.app->themes().end()
                                   ? std::string()
                                   : theme_value(theme->second, "Foreground");
    if (color == view.bars.color)
        return;
    view.bars.color = color;
    for (QScrollBar* bar : view.bars.themed)
        style_scroll_bar(bar, handle_color(view));
}

} // namespace Corvel
