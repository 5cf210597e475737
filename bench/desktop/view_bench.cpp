// A panel of generated form rows, scrolling in a window of 1000 by 700 on the offscreen platform:
// from the event to the painted screen. The argument is the number of rows.

#include "desktop/desktop_view.h"
#include "desktop/media/asset_paths.h"
#include "desktop/widgets/editor_widget.h"
#include "form_style.h"
#include "runtime/corvel_app.h"
#include "support/temp_dir.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <clocale>
#include <memory>
#include <stdexcept>

namespace {

/// Tells when the window has been painted.
class PaintWatch : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override {
        painted = painted || event->type() == QEvent::UpdateRequest;
        return false;
    }
    void wait() {
        for (painted = false; !painted;)
            QCoreApplication::processEvents();
    }
    bool painted = false;
};

class PanelApp {
public:
    explicit PanelApp(int rows) {
        const std::string head = "App:\n    Panel << Corvel/Box:\n        Bind: \"List:rows\"\n"
                                 "        Layout.Scroll: \"Vertical\"\n"
                                 "        Layout.Align: \"Stretch\"\n        Layout.Grow: 1\n";
        TestSupport::TempDir folder;
        TestSupport::write_file(folder / "panel.lyr", head + Bench::form_rows(0, 0, "        "));
        const std::string root = SOURCE_ROOT "/ext/corvel";
        Corvel::set_icon_dirs({root + "/icons"});
        app.set_root("App");
        if (!app.load_assets(root + "/themes", root + "/styles", "Dark (orrinworkshopllc)",
                             {folder.path().string()}))
            throw std::runtime_error("the panel does not load");
        set_rows(rows);
        window.reset(view.build());
        window->installEventFilter(&watch);
        window->resize(1000, 700);
        window->show();
        watch.wait();
    }
    void set_rows(int rows) {
        std::vector<Corvel::ListEntry> entries;
        for (int row = 0; row < rows; ++row)
            entries.push_back({"r" + std::to_string(row), {}});
        app.set_rows("rows", entries);
    }
    void render() {
        view.schedule_render();
        watch.wait();
    }

    Corvel::CorvelApp app;
    Corvel::DesktopView view{app};
    PaintWatch watch;
    std::unique_ptr<QWidget> window;
};

void keystroke(benchmark::State& state) {
    PanelApp panel(static_cast<int>(state.range(0)));
    QWidget* field = panel.view.widget_at("App/Panel/r0/Editor");
    QLineEdit* line = dynamic_cast<Corvel::EditorWidget&>(*field).line_edit;
    for (auto _ : state) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QStringLiteral("x"));
        QCoreApplication::sendEvent(line, &press);
        panel.watch.wait();
        if (line->text().size() > 60)
            line->clear();
    }
}

void theme_switch(benchmark::State& state) {
    PanelApp panel(static_cast<int>(state.range(0)));
    bool dark = true;
    for (auto _ : state) {
        dark = !dark;
        panel.app.set_theme(dark ? "Dark (orrinworkshopllc)" : "Light (orrinworkshopllc)");
        panel.render();
    }
}

/// A row more, then a row less.
void one_row(benchmark::State& state) {
    const int rows = static_cast<int>(state.range(0));
    PanelApp panel(rows);
    bool more = false;
    for (auto _ : state) {
        more = !more;
        panel.set_rows(more ? rows + 1 : rows);
        panel.render();
    }
}

/// The rows of a panel that is on screen come, and go again.
void all_rows(benchmark::State& state) {
    PanelApp panel(0);
    for (auto _ : state)
        for (const int rows : {static_cast<int>(state.range(0)), 0}) {
            panel.set_rows(rows);
            panel.render();
        }
}

} // namespace

BENCHMARK(keystroke)->Arg(200)->Arg(600)->Unit(benchmark::kMillisecond);
BENCHMARK(theme_switch)->Arg(200)->Arg(600)->Unit(benchmark::kMillisecond);
BENCHMARK(one_row)->Arg(200)->Arg(600)->Unit(benchmark::kMillisecond);
BENCHMARK(all_rows)->Arg(50)->Arg(200)->Arg(600)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
