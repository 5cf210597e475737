// A panel of generated form rows beside the same form written by hand with Qt: what it costs to
// visit it, leave it, switch the theme and resize it. Prints a table of processor times from the
// event to the painted window, medians.

#include "desktop/panel_app.h"
#include "hand_form.h"

#include <QApplication>
#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>

namespace {

constexpr int ROUNDS = 5;

double processor_ms() {
    return static_cast<double>(std::clock()) * 1e3 / CLOCKS_PER_SEC;
}

/// Until nothing is left to do.
double cost_of(const std::function<void()>& work) {
    const double before = processor_ms();
    work();
    for (int turn = 0; turn < 50; ++turn) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return processor_ms() - before;
}

struct Subject {
    std::function<void()> visit;
    std::function<void()> leave;
    std::function<void(bool dark)> theme;
    QWidget& window;
};

struct Costs {
    double visit, leave, theme, resize;
};

Costs measure(const Subject& subject) {
    std::vector<double> costs[4];
    for (int round = 0; round < ROUNDS; ++round) {
        costs[1].push_back(cost_of(subject.leave));
        costs[0].push_back(cost_of(subject.visit));
        costs[2].push_back(cost_of([&] { subject.theme(round % 2 == 0); }));
        costs[3].push_back(cost_of([&] { subject.window.resize(999 - round, 700); }));
    }
    for (std::vector<double>& cost : costs)
        std::sort(cost.begin(), cost.end());
    return {costs[0][ROUNDS / 2], costs[1][ROUNDS / 2], costs[2][ROUNDS / 2], costs[3][ROUNDS / 2]};
}

Costs measure_hand(int rows) {
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* area = new QScrollArea;
    area->setWidgetResizable(true);
    layout->addWidget(area);
    window.resize(1000, 700);
    const auto visit = [&] { area->setWidget(Bench::hand_form(rows)); };
    visit();
    window.show();
    cost_of([] {});
    const QPalette light = QApplication::palette();
    QPalette dark = light;
    dark.setColor(QPalette::Window, Qt::black);
    dark.setColor(QPalette::WindowText, Qt::white);
    dark.setColor(QPalette::Base, Qt::darkGray);
    const Costs costs = measure({visit, [&] { delete area->takeWidget(); },
                                 [&](bool on) { window.setPalette(on ? dark : light); }, window});
    return costs;
}

Costs measure_panel(int rows) {
    Bench::PanelApp panel(rows);
    cost_of([] {});
    const auto show = [&](bool on) {
        panel.app.set_visible("App/Panel", on);
        panel.view.apply_patches(panel.app.render_patches());
        panel.view.finish();
    };
    return measure({[&] { show(true); }, [&] { show(false); },
                    [&](bool light) {
                        panel.app.set_theme(light ? "Light (orrinworkshopllc)"
                                                  : "Dark (orrinworkshopllc)");
                        panel.view.apply_patches(panel.app.render_patches());
                    },
                    *panel.window});
}

void print(const char* name, int rows, const Costs& costs) {
    std::printf("%-8s %5d rows: visit %7.1f ms, leave %7.1f, theme %7.1f, resize %7.1f\n", name,
                rows, costs.visit, costs.leave, costs.theme, costs.resize);
}

} // namespace

int main(int argc, char** argv) {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    for (const int rows : {10, 100, 1000}) {
        print("by hand", rows, measure_hand(rows));
        print("panel", rows, measure_panel(rows));
    }
    return 0;
}
