// Measures starts as whole processes: `start_bench` runs itself several times as a form written by
// hand, as the application without a document, and as the application with a site's form, and
// prints medians. Processor time counts up to the first paint, peak memory up to one second later.

#include "hand_form.h"
#include "runtime/corvel_app.h"
#include "runtime/desktop_app.h"

#include <QApplication>
#include <QEvent>
#include <QScrollArea>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr int RUNS = 7;
constexpr int ROWS = 50;

long peak_kib() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:"))
            return std::atol(line.c_str() + 6);
    return 0;
}

/// At the first paint of a window, once its painting is through, prints the processor time in
/// milliseconds, a second later the peak memory in KiB, and ends the process.
class FirstPaint : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && watched->isWidgetType() && !painted_) {
            painted_ = true;
            QTimer::singleShot(0, this, [this] {
                std::printf("%.2f ", static_cast<double>(std::clock()) * 1e3 / CLOCKS_PER_SEC);
                QTimer::singleShot(1000, this, [] {
                    std::printf("%ld\n", peak_kib());
                    std::fflush(stdout);
                    ::_exit(0);
                });
            });
        }
        return false;
    }

private:
    bool painted_ = false;
};

void watch_first_paint() {
    qApp->installEventFilter(new FirstPaint(qApp));
}

int run_form(int argc, char** argv) {
    QApplication application(argc, argv);
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* area = new QScrollArea;
    area->setWidgetResizable(true);
    area->setWidget(Bench::hand_form(ROWS));
    layout->addWidget(area);
    window.resize(1000, 700);
    watch_first_paint();
    window.show();
    return QApplication::exec();
}

int run_application(int argc, char** argv) {
    Corvel::DesktopAppConfig config;
    config.framework_root = SOURCE_ROOT "/ext/corvel";
    config.style_dirs = {SOURCE_ROOT "/styles"};
    config.icon_dirs = {SOURCE_ROOT "/icons"};
    config.icon = "logo_lumenfold.png";
    config.build = [](Corvel::CorvelApp& app) {
        watch_first_paint();
        Corvel::build_app(app);
    };
    return Corvel::run_desktop(argc, argv, config);
}

struct Figures {
    double painted = 0;
    long peak = 0;
};

Figures median_run(const std::string& program, const std::string& side, const std::string& open) {
    const std::string command = "LUMENFOLD_DEV_OPEN='" + open + "' QT_QPA_PLATFORM=offscreen '" +
                                program + "' " + side + " 2>/dev/null";
    std::vector<Figures> runs(RUNS);
    for (Figures& run : runs) {
        FILE* pipe = ::popen(command.c_str(), "r");
        if (!pipe || std::fscanf(pipe, "%lf %ld", &run.painted, &run.peak) != 2)
            std::fprintf(stderr, "no figures from %s\n", side.c_str());
        if (pipe)
            ::pclose(pipe);
    }
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
        return run_form(argc, argv);
    if (side == "application")
        return run_application(argc, argv);
    const Figures form = median_run(argv[0], "form", "");
    print("form of 50 rows by hand", form, form);
    print("application, no document", median_run(argv[0], "application", ""), form);
    print("application, example site",
          median_run(argv[0], "application", SOURCE_ROOT "/examples/tidewater/.lumenfold-site"),
          form);
    return 0;
}
