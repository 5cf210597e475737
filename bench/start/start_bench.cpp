#include "qt_form.h"
#include "runtime/corvel_app.h"
#include "runtime/desktop_app.h"

#include <QApplication>
#include <QEvent>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

// Measures starts as whole processes: `start_bench` runs itself several times as the application
// with a site's form, as the application without a document, and as a form written by hand, and
// prints medians. Processor time counts up to the first paint, peak memory up to one second later.

namespace {

constexpr int RUNS = 7;
constexpr int SETTLE_MS = 1000;

double processor_ms() {
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

long peak_kib() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:"))
            return std::atol(line.c_str() + 6);
    return 0;
}

double built_ms = 0; ///< processor time when the application's wiring was about to begin

/// Reports at the first paint of a window, once its painting is through.
class FirstPaint : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && watched->isWidgetType() && !painted_) {
            painted_ = true;
            QTimer::singleShot(0, this, [this] { report(); });
        }
        return false;
    }

private:
    void report() {
        const double at_paint = processor_ms();
        QTimer::singleShot(SETTLE_MS, this, [at_paint] {
            std::printf("%.2f %.2f %ld\n", built_ms, at_paint, peak_kib());
            std::fflush(stdout);
            ::_exit(0);
        });
    }
    bool painted_ = false;
};

void watch_first_paint() {
    qApp->installEventFilter(new FirstPaint(qApp));
}

int run_application(int argc, char** argv) {
    Corvel::DesktopAppConfig config;
    config.framework_root = SOURCE_ROOT "/ext/corvel";
    config.style_dirs = {SOURCE_ROOT "/styles"};
    config.icon_dirs = {SOURCE_ROOT "/icons"};
    config.build = [](Corvel::CorvelApp& app) {
        built_ms = processor_ms();
        watch_first_paint();
        Corvel::build_app(app);
    };
    return Corvel::run_desktop(argc, argv, config);
}

struct Figures {
    double built = 0;
    double painted = 0;
    long peak = 0;
};

Figures run_once(const std::string& program, const std::string& side, const std::string& open) {
    const std::string command = "LUMENFOLD_DEV_OPEN='" + open + "' QT_QPA_PLATFORM=offscreen '" +
                                program + "' " + side + " 2>/dev/null";
    Figures figures;
    if (FILE* pipe = ::popen(command.c_str(), "r")) {
        if (std::fscanf(pipe, "%lf %lf %ld", &figures.built, &figures.painted, &figures.peak) != 3)
            std::cerr << "no figures from " << side << '\n';
        ::pclose(pipe);
    }
    return figures;
}

Figures median_run(const std::string& program, const std::string& side, const std::string& open) {
    std::vector<Figures> runs;
    for (int i = 0; i < RUNS; ++i)
        runs.push_back(run_once(program, side, open));
    std::sort(runs.begin(), runs.end(),
              [](const Figures& a, const Figures& b) { return a.painted < b.painted; });
    return runs[RUNS / 2];
}

void print(const char* name, const Figures& figures, const Figures& reference) {
    std::printf("%-28s first paint %7.1f ms (%.2f times the form by hand), peak %5.1f MiB\n", name,
                figures.painted, figures.painted / reference.painted,
                static_cast<double>(figures.peak) / 1024);
}

} // namespace

int main(int argc, char** argv) {
    const std::string side = argc > 1 ? argv[1] : "";
    if (side == "form")
        return run_qt_form(argc, argv, watch_first_paint);
    if (side == "application")
        return run_application(argc, argv);
    const Figures form = median_run(argv[0], "form", "");
    const Figures empty = median_run(argv[0], "application", "");
    const Figures site =
        median_run(argv[0], "application", SOURCE_ROOT "/examples/tidewater/.lumenfold-site");
    print("form of 50 rows by hand", form, form);
    print("application, no document", empty, form);
    print("application, example site", site, form);
    std::printf("toolkit and assets before the wiring: %.1f ms\n", empty.built);
    return 0;
}
