#include "panel_app.h"

#include "desktop/media/asset_paths.h"
#include "desktop/widgets/editor_widget.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <stdlib.h>

namespace Bench {
namespace {

namespace fs = std::filesystem;

constexpr const char* PANEL = R"(App:
    Panel << Corvel/Box:
        Fill: Theme/Primary
        Layout.Scroll: "Vertical"
        Layout.Align: "Stretch"
        Layout.Grow: 1
        Bind: "List:rows"
        Row << Corvel/Box:
            Fill: Theme/Secondary
            Layout.Direction: "Row"
            Layout.Spacing: 8
            Padding.(Left, Right, Top, Bottom): 6
            Corner Radii.(Top Left, Top Right, Bottom Left, Bottom Right): 6
            Icon << Corvel/Icon:
                Source: "trash"
                Text Color: Theme/Foreground
                Size.(Width, Height): 18
            Label << Corvel/Text:
                Text Color: Theme/Foreground
                Font.Size: 14
                Bind: "Field:label"
            Field << Corvel/Editor:
                Fill: Theme/Tertiary
                Text Color: Theme/Foreground
                Font.Size: 14
                Placeholder: "A value"
                Layout.Grow: 1
)";

/// The styles and themes of the panel in a folder that lives as long as this.
class Assets {
public:
    Assets() {
        std::string pattern = (fs::temp_directory_path() / "corvel-bench-XXXXXX").string();
        if (!::mkdtemp(pattern.data()))
            throw std::runtime_error("cannot make a temporary folder");
        folder = pattern;
        write("styles/widgets/kinds.lyr", "Box\nText\nEditor\nIcon\n");
        write("styles/mounts/theme.lyr",
              "Theme:\n    (Foreground, Primary, Secondary, Tertiary): \"\"\n");
        write("app/panel.lyr", PANEL);
        write("themes/dark.json", theme("Dark", "#e3e3e3", "#36393f", "#2f3136"));
        write("themes/light.json", theme("Light", "#202225", "#f4f5f7", "#ffffff"));
    }
    ~Assets() {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
    Assets(const Assets&) = delete;
    Assets& operator=(const Assets&) = delete;

    fs::path folder;

private:
    void write(const std::string& name, const std::string& text) {
        fs::create_directories((folder / name).parent_path());
        std::ofstream(folder / name, std::ios::binary) << text;
    }
    static std::string theme(const std::string& name, const std::string& text,
                             const std::string& panel, const std::string& card) {
        return "{\"" + name + "\": {\"Foreground\": \"" + text + "\", \"Primary\": \"" + panel +
               "\", \"Secondary\": \"" + card + "\", \"Tertiary\": \"" + panel + "\"}}";
    }
};

/// Counts the paints of a window.
class PaintCounter : public QObject {
public:
    PaintCounter(QObject* parent, int& counted)
        : QObject(parent)
        , counted_(counted) {}

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::UpdateRequest)
            ++counted_;
        return false;
    }

private:
    int& counted_;
};

} // namespace

PanelApp::PanelApp(int rows)
    : view(app) {
    const Assets assets;
    const std::string folder = assets.folder.string();
    Corvel::set_icon_dirs({std::string(SOURCE_ROOT) + "/ext/corvel/icons"});
    app.set_root("App");
    if (!app.load_assets(folder + "/themes", folder + "/styles", "Dark", {folder + "/app"}))
        throw std::runtime_error("the panel does not load");
    set_rows(rows);
    window.reset(view.build());
    window->installEventFilter(new PaintCounter(window.get(), paints));
    window->resize(1000, 700);
    window->show();
    window->activateWindow();
    for (int turn = 0; turn < 5; ++turn)
        QCoreApplication::processEvents();
}

void PanelApp::set_rows(int rows) {
    std::vector<Corvel::ListEntry> entries;
    for (int row = 0; row < rows; ++row)
        entries.push_back({"r" + std::to_string(row), {{"label", "Row " + std::to_string(row)}}});
    app.set_rows("rows", entries);
}

void PanelApp::render() {
    view.schedule_render();
    const int before = paints;
    do
        QCoreApplication::processEvents();
    while (paints == before);
}

void PanelApp::type(char letter) {
    auto* field = dynamic_cast<Corvel::EditorWidget*>(view.widget_at("App/Panel/r0/Field"));
    QLineEdit* line = field->line_edit;
    QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(QLatin1Char(letter)));
    const int before = paints;
    QCoreApplication::sendEvent(line, &press);
    do
        QCoreApplication::processEvents();
    while (paints == before);
    if (line->text().size() > 60)
        line->clear();
}

} // namespace Bench
