#pragma once

#include "desktop/desktop_view.h"
#include "loaded_app.h"
#include "support/fake_platform.h"
#include "support/temp_dir.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

class QComboBox;
class QWidget;

namespace TestSupport {

/// The whole application in a real window, used by real mouse and key events. The end of a node's
/// path names it where only one node on screen has it.
class AppWindow {
public:
    AppWindow();

    /// Wires the application, as at a start with these files, and shows the window.
    void start(const std::vector<std::filesystem::path>& files);
    /// Opens a file from the home screen.
    void open(const std::filesystem::path& file);

    std::string path_of(const std::string& node) const;
    /// Null if there is no such node on screen.
    QWidget* widget(const std::string& node) const;
    void click(const std::string& node);
    /// Clicks what carries the action below a row.
    void row_action(const std::string& row, const std::string& action);
    /// Selects all in a field and types over it; an empty text deletes.
    void type(const std::string& node, const std::string& text);
    QComboBox* combo(const std::string& node) const;
    void choose(const std::string& node, int index);
    std::string editor_text(const std::string& node) const;
    void advance(int milliseconds);
    /// Answers the confirm dialog, which must be up.
    void confirm();
    void cancel();
    /// The confirm dialog's message; empty if it is not up.
    std::string question() const;

    TempDir dir;
    std::unique_ptr<Corvel::CorvelApp> app;
    FakePlatform platform;
    Corvel::DesktopView view;
    std::unique_ptr<QWidget> window;
};

} // namespace TestSupport
