#pragma once

#include "runtime/render_node.h"

#include <QWidget>

#include <functional>

namespace Corvel {

class FocusRing;

/// A painted box: fill, border and rounded corners from its style. It reports a press as a click,
/// and can stand for the window's title bar (`window_drag`) or its edges (`window_resize`). One
/// that is pressable is reached by Tab and pressed by Space and Return; a click gives it no focus.
class VBoxWidget : public QWidget {
    Q_OBJECT
public:
    explicit VBoxWidget(QWidget* parent = nullptr);
    ~VBoxWidget() override;

    void set_style(const SharedStyle& value);
    void set_opacity(double value);
    /// Whether the box is announced as ticked; tells assistive programs of a change.
    void set_checked(bool on);
    /// Whether the box is announced as the chosen one and as out of use; a change is told.
    void set_standing(bool is_selected, bool is_disabled);
    /// Acts as a press on the box does; nothing happens without `on_click`.
    void click();
    /// Lets the keyboard reach the box.
    void set_pressable();
    /// Shows or hides the ring that marks the keyboard's place.
    void show_ring(bool on);

    std::function<void()> on_click; ///< a press of any button; set before the box is first shown
    std::function<void()> on_resize;
    SharedStyle style;
    bool window_drag = false;
    bool window_resize = false;
    double opacity = 1.0;
    bool checkable = false; ///< announced as a check box, not as a button
    bool checked = false;
    bool tab = false; ///< announced as one of several tabs
    bool selected = false;
    bool disabled = false;

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    FocusRing* ring_ = nullptr; ///< null until first needed
};

} // namespace Corvel
