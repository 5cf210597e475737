#pragma once

#include <QScrollArea>

namespace Corvel {

/// What a dialog's window holds: as large as its content wants to be, and scrolling where that is
/// more than the screen has.
class DialogArea : public QScrollArea {
public:
    /// Takes over `content`.
    explicit DialogArea(QWidget* content);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace Corvel
