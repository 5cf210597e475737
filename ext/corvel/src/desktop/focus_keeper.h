#pragma once

#include <QPointer>
#include <QWidget>

namespace Corvel {

/// Gives the focus back to a field, with its selection, when a move of `moved` to another parent
/// takes it away.
class FocusKeeper {
public:
    explicit FocusKeeper(const QWidget& moved);
    ~FocusKeeper();
    FocusKeeper(const FocusKeeper&) = delete;
    FocusKeeper& operator=(const FocusKeeper&) = delete;

private:
    QPointer<QWidget> focus_;
    int selection_start_ = -1; ///< of a line of text; -1: nothing is selected
    int selection_length_ = 0;
};

} // namespace Corvel
