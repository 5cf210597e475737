#pragma once

#include "loaded_app.h"
#include "support/fake_platform.h"
#include "support/model_view.h"
#include "support/temp_dir.h"

#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace TestSupport {

/// The whole application on the shipped styles and themes, without a display. Events go in by node
/// path, of which the end is enough where only one node on screen has it; what a person would see
/// comes out. Editors keep what was typed into them exactly as the widgets do: an update reaches
/// one only when its text differs from the last one rendered.
class AppDriver {
public:
    AppDriver();
    virtual ~AppDriver() = default;
    AppDriver(const AppDriver&) = delete;
    AppDriver& operator=(const AppDriver&) = delete;

    /// Wires the application, as at a start with these files, and renders.
    virtual void start(const std::vector<std::filesystem::path>& files = {});
    /// Opens a file from the home screen.
    void open(const std::filesystem::path& file);

    virtual void click(const std::string& node);
    /// Replaces the text of an editor on screen, as a user would.
    virtual void type(const std::string& node, const std::string& text);
    virtual void choose(const std::string& node, const std::string& value);
    /// Clicks whatever carries the action below a row.
    void row_action(const std::string& row, const std::string& action);
    virtual void advance(int milliseconds);
    virtual void quit() {}

    bool shown(const std::string& node) const;
    /// Whether such a node has ever been on screen or been spoken of by the application.
    bool known(const std::string& node) const;
    /// What is to be read at a node that is on screen.
    virtual std::string text(const std::string& node) const;
    /// Every text at and below a node in reading order, joined by "|".
    std::string reading(const std::string& node) const;
    const Corvel::RenderNode& node(const std::string& node) const;
    bool has_state(const std::string& node, const std::string& state) const;
    /// Names of the rows below a list's node, joined by blanks.
    std::string rows(const std::string& list) const;
    /// The value that a combo box shows.
    virtual std::string chosen(const std::string& node) const;
    /// Labels of a combo box, joined by "|".
    std::string options(const std::string& node) const;

    /// The title of the message dialog and its message, joined by ": "; empty if it is hidden.
    /// Reading dismisses it.
    std::string take_message();
    /// The same of the confirm dialog, with the confirm button's label behind; it stays.
    std::string question() const;

    TempDir dir;
    TempDir data; ///< for files of the application's own
    std::unique_ptr<Corvel::CorvelApp> app;
    FakePlatform platform;

protected:
    std::string path_of(const std::string& node) const;
    /// What is on screen by now.
    virtual const ModelView& screen() const { return view_; }
    /// To be called when the screen may have changed.
    virtual void render();
    void note_seen();

private:
    struct Editor {
        std::string content;
        std::string rendered;
    };
    void apply_to_editors(const Corvel::RenderPatch& patch);
    void add_editors(const Corvel::RenderNode& node);

    ModelView view_;
    std::set<std::string> seen_;
    std::map<std::string, Editor> editors_;
};

} // namespace TestSupport
