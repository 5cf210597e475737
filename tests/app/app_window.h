#pragma once

#include "desktop/desktop_view.h"
#include "loaded_app.h"
#include "support/fake_platform.h"
#include "support/temp_dir.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

class QLineEdit;
class QWidget;

namespace TestSupport {

/// The whole application in a real window, used by real mouse and key events.
class AppWindow {
public:
    AppWindow();

    /// Wires the application, as at a start with these files, and shows the window.
    void start(const std::vector<std::filesystem::path>& files);

    QWidget* widget(const std::string& path) const;
    void click(const std::string& path);
    /// Clicks what carries the action below a row.
    void row_action(const std::string& row_path, const std::string& action);
    /// Selects all in a field and types over it; an empty text deletes.
    void type(const std::string& path, const std::string& text);
    std::string editor_text(const std::string& path) const;
    void advance(int milliseconds);

    TempDir dir;
    std::unique_ptr<Corvel::CorvelApp> app;
    FakePlatform platform;
    Corvel::DesktopView view;
    std::unique_ptr<QWidget> window;
};

} // namespace TestSupport
