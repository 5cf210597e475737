#pragma once

#include <QPointer>
#include <QWidget>

#include <string>

namespace Corvel {

struct ViewState;

/// Where the keyboard is, over a batch of patches. A pressed button that is made anew meanwhile
/// gets the focus back; otherwise nothing has it until somebody asks: Qt would give it to the first
/// field that it finds, and a stray key would edit that.
class FocusPlace {
public:
    explicit FocusPlace(ViewState& view);
    /// To be called when the patches are through.
    void restore();

private:
    ViewState& view_;
    QPointer<QWidget> widget_;
    std::string path_; ///< of the button's node; empty: no button had the focus
};

/// Takes the focus from whatever has it in the main window, unless that lies in `except`.
void leave_fields(ViewState& view, const QWidget& except);

/// The dialogs that were just opened: the first field of each takes the focus with its text
/// selected, or the window itself if it has none.
void focus_opened_dialogs(ViewState& view);

} // namespace Corvel
