#pragma once

#include "loaded_app.h"
#include "support/fake_platform.h"
#include "support/model_view.h"
#include "support/temp_dir.h"

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace TestSupport {

/// The whole application on the shipped styles and themes, without a display. Events go in by node
/// path; what a person would see comes out. Editors keep what was typed into them exactly as the
/// widgets do: an update reaches one only when its text differs from the last one rendered.
class AppDriver {
public:
    AppDriver();
    AppDriver(const AppDriver&) = delete;
    AppDriver& operator=(const AppDriver&) = delete;

    /// Wires the application, as at a start with these files, and renders.
    void start(const std::vector<std::filesystem::path>& files = {});

    void click(const std::string& path);
    /// Replaces the text of an editor on screen, as a user would.
    void type(const std::string& path, const std::string& text);
    void choose(const std::string& path, const std::string& value);
    /// Clicks whatever carries the action below the row at `row_path`.
    void row_action(const std::string& row_path, const std::string& action);
    void advance(int milliseconds);

    bool shown(const std::string& path) const;
    /// What is to be read at a node that is on screen.
    std::string text(const std::string& path) const;
    /// Every text at and below a node in reading order, joined by "|".
    std::string reading(const std::string& path) const;
    std::string source(const std::string& path) const;
    double height(const std::string& path) const;
    bool has_state(const std::string& path, const std::string& state) const;
    /// Names of the rows below a list's node.
    std::vector<std::string> rows(const std::string& list_path) const;
    /// Labels of a combo box.
    std::vector<std::string> options(const std::string& path) const;
    std::string selected(const std::string& path) const;
    Corvel::NodeKind kind(const std::string& path) const;

    /// The title of the message dialog and its message, joined by ": "; empty if it is hidden.
    /// Reading dismisses it.
    std::string take_message();
    /// The same of the confirm dialog, with the confirm button's label behind; it stays.
    std::string question() const;
    void confirm();
    void cancel();

    TempDir dir;
    std::unique_ptr<Corvel::CorvelApp> app;
    FakePlatform platform;

private:
    struct Editor {
        std::string content;
        std::string rendered;
    };
    const Corvel::RenderNode& node(const std::string& path) const;
    void render();
    void apply_to_editors(const Corvel::RenderPatch& patch);
    void add_editors(const Corvel::RenderNode& node);
    void push(Editor& editor, const std::string& text) const;

    ModelView view_;
    std::map<std::string, Editor> editors_;
};

} // namespace TestSupport
