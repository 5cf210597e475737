#pragma once

#include <QWidget>

namespace Corvel {

class VBoxWidget;

/// The mark of the keyboard's place: a ring above a box and its children, in the theme's text
/// colour with a line of its surface inside, so that it shows on any fill. Lies in the box, owned
/// by it.
class FocusRing : public QWidget {
public:
    explicit FocusRing(VBoxWidget* box);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    VBoxWidget* box_;
};

/// Scrolls everything around `widget` so that it can be seen.
void scroll_into_view(QWidget* widget);

} // namespace Corvel
