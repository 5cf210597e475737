#pragma once

#include <QComboBox>
#include <QStyledItemDelegate>

namespace Corvel {

/// A combo box whose list opens under a box around it, as wide as that box, or above it where the
/// screen ends. The list is drawn by rows of its own in the application's palette.
class ListCombo : public QComboBox {
public:
    /// `frame` is the box; it contains this widget and outlives it.
    explicit ListCombo(QWidget* frame);

    void showPopup() override;

private:
    QWidget* frame_;
};

} // namespace Corvel
