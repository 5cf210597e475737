// Forty moving icons in one window on the offscreen platform: what share of a core they take while
// their timers run, and how many of their frames a second reach the screen. The argument is the
// side of an icon in pixels.

#include "desktop/media/asset_paths.h"
#include "desktop/widgets/icon_widget.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <clocale>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int ICONS = 40;
constexpr int COLUMNS = 10;
constexpr int SECONDS = 3;

/// Counts the paints of the widgets it is installed on.
class PaintCount : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override {
        paints += event->type() == QEvent::Paint;
        return false;
    }
    int paints = 0;
};

double processor_seconds() {
    return double(std::clock()) / CLOCKS_PER_SEC;
}

void moving(benchmark::State& state, const std::string& name) {
    const int side = int(state.range(0));
    QWidget window;
    PaintCount count;
    std::vector<std::unique_ptr<Corvel::IconWidget>> icons;
    for (int i = 0; i < ICONS; ++i) {
        auto icon = std::make_unique<Corvel::IconWidget>(name, &window);
        icon->setGeometry(i % COLUMNS * 60, i / COLUMNS * 60, side, side);
        icon->set_color("#e3e3e3");
        icon->installEventFilter(&count);
        icons.push_back(std::move(icon));
    }
    window.resize(COLUMNS * 60, ICONS / COLUMNS * 60);
    window.show();
    for (auto _ : state) {
        count.paints = 0;
        QElapsedTimer clock;
        clock.start();
        const double before = processor_seconds();
        QTimer::singleShot(SECONDS * 1000, qApp, &QApplication::quit);
        QApplication::exec();
        const double wall = double(clock.nsecsElapsed()) * 1e-9;
        state.counters["core"] = (processor_seconds() - before) / wall;
        state.counters["frames"] = count.paints / wall / ICONS;
        state.counters["us_per_frame"] = 1e6 * (processor_seconds() - before) / count.paints;
    }
}

BENCHMARK_CAPTURE(moving, building, "building")->Arg(20)->Arg(48)->Iterations(1);
BENCHMARK_CAPTURE(moving, dots, "dots")->Arg(20)->Arg(48)->Iterations(1);
BENCHMARK_CAPTURE(moving, wheels, "wheels")->Arg(20)->Arg(48)->Iterations(1);
BENCHMARK_CAPTURE(moving, curves, "curves")->Arg(20)->Arg(48)->Iterations(1);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    Corvel::set_icon_dirs({SOURCE_ROOT "/bench/svg/icons", SOURCE_ROOT "/icons"});
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
