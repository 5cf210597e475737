#include "desktop/focus_keeper.h"

#include <QLineEdit>

namespace Corvel {

FocusKeeper::FocusKeeper(const QWidget& moved) {
    QWidget* focus = moved.window()->focusWidget();
    if (!focus || (focus != &moved && !moved.isAncestorOf(focus)))
        return;
    focus_ = focus;
    if (const auto* line = qobject_cast<QLineEdit*>(focus)) {
        selection_start_ = line->selectionStart();
        selection_length_ = line->selectionLength();
    }
}

FocusKeeper::~FocusKeeper() {
    if (!focus_ || focus_->hasFocus())
        return;
    focus_->setFocus(Qt::OtherFocusReason);
    auto* line = qobject_cast<QLineEdit*>(focus_.data());
    if (line && selection_start_ >= 0)
        line->setSelection(selection_start_, selection_length_);
}

} // namespace Corvel
