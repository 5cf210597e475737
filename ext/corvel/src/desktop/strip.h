#pragma once

#include <QPointer>
#include <QScrollArea>

namespace Corvel {

struct ViewState;

/// The scroll area of a box that scrolls sideways only, such as a bar of tabs. The wheel moves it,
/// as there is nothing else that it could move. The child shown last stays in view when the strip
/// gets narrower.
class StripArea : public QScrollArea {
public:
    explicit StripArea(QWidget* parent);

    /// Scrolls to the child once the layout has run.
    void reveal(QWidget* child);

protected:
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QPointer<QWidget> shown_;
};

/// Enters a strip, a `StripArea`, in the view's list until it is destroyed.
void watch_strip(ViewState& view, QScrollArea* strip);

/// Scrolls each strip whose child with the state "Active" or "Selected" is another one than before
/// to that child. To be called after patches.
void reveal_active_children(ViewState& view);

} // namespace Corvel
