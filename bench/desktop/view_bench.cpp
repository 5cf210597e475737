// A panel of generated form rows, scrolling in a window of 1000 by 700 on the offscreen platform:
// from the event to the painted screen. The argument is the number of rows.

#include "desktop/panel_app.h"
#include "desktop/widgets/editor_widget.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <clocale>

namespace {

using Bench::PanelApp;

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
