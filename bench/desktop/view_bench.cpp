#include "panel_app.h"

#include <benchmark/benchmark.h>

#include <QApplication>

#include <clocale>
#include <cstdlib>

// A panel of rows with a label, a field and an icon each, on the offscreen platform: from the event
// to the painted screen. The argument is the number of rows.

namespace {

using Bench::PanelApp;

void keystroke(benchmark::State& state) {
    PanelApp panel(static_cast<int>(state.range(0)));
    char letter = 'a';
    for (auto _ : state) {
        panel.type(letter);
        letter = letter == 'z' ? 'a' : static_cast<char>(letter + 1);
    }
}

void theme_switch(benchmark::State& state) {
    PanelApp panel(static_cast<int>(state.range(0)));
    bool dark = true;
    for (auto _ : state) {
        panel.app.set_theme(dark ? "Light" : "Dark");
        panel.render();
        dark = !dark;
    }
}

/// A row more, then a row less.
void one_row(benchmark::State& state) {
    const int rows = static_cast<int>(state.range(0));
    PanelApp panel(rows);
    bool more = true;
    for (auto _ : state) {
        panel.set_rows(more ? rows + 1 : rows);
        panel.render();
        more = !more;
    }
}

/// The rows of a panel that is on screen come, and go again.
void all_rows(benchmark::State& state) {
    const int rows = static_cast<int>(state.range(0));
    PanelApp panel(0);
    for (auto _ : state) {
        panel.set_rows(rows);
        panel.render();
        panel.set_rows(0);
        panel.render();
    }
}

/// What every event costs the view when nothing changed and nothing floats.
void no_patch(benchmark::State& state) {
    PanelApp panel(static_cast<int>(state.range(0)));
    for (auto _ : state)
        panel.view.apply_patches({});
}

} // namespace

BENCHMARK(keystroke)->Arg(200)->Arg(600)->Unit(benchmark::kMillisecond);
BENCHMARK(theme_switch)->Arg(200)->Arg(600)->Unit(benchmark::kMillisecond);
BENCHMARK(one_row)->Arg(200)->Arg(600)->Unit(benchmark::kMillisecond);
BENCHMARK(all_rows)->Arg(50)->Arg(200)->Arg(600)->Unit(benchmark::kMillisecond);
BENCHMARK(no_patch)->Arg(10)->Arg(600)->Unit(benchmark::kNanosecond);

int main(int argc, char** argv) {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
