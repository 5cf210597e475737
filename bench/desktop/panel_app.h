#pragma once

#include "desktop/desktop_view.h"
#include "runtime/corvel_app.h"

#include <QWidget>

#include <memory>
#include <string>

namespace Bench {

/// A window of 1000 by 700 with one scrolling panel whose rows each hold a label, a field and an
/// icon, in the colours of one of two themes, "Dark" and "Light".
class PanelApp {
public:
    explicit PanelApp(int rows);

    void set_rows(int rows);
    /// Renders what changed in the application and paints it.
    void render();
    /// Types one letter in the first field and waits until it is painted.
    void type(char letter);

    Corvel::CorvelApp app;
    Corvel::DesktopView view;
    std::unique_ptr<QWidget> window;
    int paints = 0; ///< of the window so far
};

} // namespace Bench
