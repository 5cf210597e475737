#include "desktop/collapse.h"

#include "desktop/desktop_view_p.h"
#include "desktop/overlays.h"
#include "desktop/widgets/root_container.h"

#include <QEasingCurve>
#include <QVariantAnimation>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace Corvel {

namespace {

constexpr int FOLD_MS = 150;

/// The height limits of an expanded node: free, or what its style fixes.
void free_height(const DNode& dnode) {
    dnode.widget->setMaximumHeight(dnode.fold.fixed_height > 0 ? dnode.fold.fixed_height
                                                               : QWIDGETSIZE_MAX);
    dnode.widget->setMinimumHeight(dnode.fold.fixed_height);
}

int full_height(const DNode& dnode) {
    if (dnode.fold.fixed_height > 0)
        return dnode.fold.fixed_height;
    return std::max(dnode.widget->sizeHint().height(), 0);
}

void finish_fold(ViewState& view, const std::string& path, const QVariantAnimation* fold) {
    DNode* dnode = view.find(path);
    if (!dnode || dnode->fold.animation != fold)
        return;
    dnode->fold.animation = nullptr;
    set_collapsed_limits(*dnode);
    position_overlays(view);
}

void start_fold(ViewState& view, DNode& dnode, int from, int to) {
    QWidget* widget = dnode.widget;
    auto* fold = new QVariantAnimation(widget);
    fold->setDuration(FOLD_MS);
    fold->setEasingCurve(QEasingCurve::InOutQuad);
    fold->setStartValue(from);
    fold->setEndValue(to);
    dnode.fold.animation = fold;
    // A removed widget lives until control is back in the event loop; its node does not.
    const std::string path = *dnode.path;
    QObject::connect(fold, &QVariantAnimation::valueChanged, widget,
                     [&view, path, fold, widget](const QVariant& height) {
                         const DNode* folding = view.find(path);
                         if (!folding || folding->fold.animation != fold)
                             return;
                         widget->setFixedHeight(height.toInt());
                         position_overlays(view);
                     });
    QObject::connect(fold, &QVariantAnimation::finished, widget,
                     [&view, path, fold] { finish_fold(view, path, fold); });
    fold->start(QAbstractAnimation::DeleteWhenStopped);
}

} // namespace

void note_fixed_height(DNode& dnode) {
    // Markdown sizes itself.
    const bool fixed = !dnode.markdown && dnode.widget->minimumHeight() > 0 &&
                       dnode.widget->minimumHeight() == dnode.widget->maximumHeight();
    dnode.fold.fixed_height = fixed ? dnode.widget->minimumHeight() : 0;
}

void set_collapsed_limits(DNode& dnode) {
    if (dnode.fold.collapsed) {
        dnode.widget->setMinimumHeight(0);
        dnode.widget->setMaximumHeight(0);
    } else {
        free_height(dnode);
    }
}

void apply_collapsed(ViewState& view, DNode& dnode, bool value) {
    if (!dnode.widget)
        return;
    if (value == dnode.fold.collapsed) {
        if (dnode.fold.animation)
            dnode.widget->setFixedHeight(dnode.fold.animation->currentValue().toInt());
        else
            set_collapsed_limits(dnode);
        return;
    }
    dnode.fold.collapsed = value;
    if (QVariantAnimation* running = std::exchange(dnode.fold.animation, nullptr))
        running->stop();
    free_height(dnode);
    const int full = full_height(dnode);
    dnode.widget->setFixedHeight(value ? full : 0);
    start_fold(view, dnode, value ? full : 0, value ? 0 : full);
}

} // namespace Corvel
