// A log that a program fills, in the application's log and in a plain text widget beside it: lines
// come as from a pipe, some 64 KiB between two turns of the event loop. `log_bench [LINES]` prints
// a table; times are of the processor.

#include "desktop/panel_app.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QScrollBar>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <functional>

namespace {

constexpr int LINES_A_TURN = 1000;

double processor_ms() {
    return static_cast<double>(std::clock()) * 1e3 / CLOCKS_PER_SEC;
}

double cost_of(const std::function<void()>& work) {
    const double before = processor_ms();
    work();
    for (int turn = 0; turn < 3; ++turn)
        QCoreApplication::processEvents();
    return processor_ms() - before;
}

double resident_mib() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmRSS:"))
            return std::atof(line.c_str() + 6) / 1024;
    return 0;
}

std::string line_text(int number) {
    return "\n" + std::to_string(number) + " Building page number " + std::to_string(number * 7) +
           " of the documentation";
}

struct Subject {
    const char* name;
    std::function<void(const std::string&)> append;
    std::function<void()> leave_and_return;
    QWidget& window;
};

void measure(const Subject& subject, int lines) {
    const double memory = resident_mib();
    double total = 0;
    double longest = 0;
    for (int line = 0; line < lines; line += LINES_A_TURN) {
        std::string chunk;
        for (int i = line; i < std::min(line + LINES_A_TURN, lines); ++i)
            chunk += line_text(i);
        const double turn = cost_of([&] { subject.append(chunk); });
        total += turn;
        longest = std::max(longest, turn);
    }
    double resize = 0;
    for (int step = 1; step <= 5; ++step)
        resize = std::max(resize, cost_of([&] { subject.window.resize(1000 - 20 * step, 700); }));
    const double back = cost_of(subject.leave_and_return);
    std::printf(
        "%-20s %8d lines %8.0f ms, longest turn %6.1f, resize %6.1f, back %7.1f, %6.1f MiB\n",
        subject.name, lines, total, longest, resize, back, resident_mib() - memory);
}

void measure_log(int lines) {
    TestSupport::TempDir folder;
    TestSupport::write_file(folder / "log.lyr",
                            "App:\n    Panel << Corvel/Box:\n        Layout.Align: \"Stretch\"\n"
                            "        Layout.Grow: 1\n        Log << Corvel/Log View\n");
    Corvel::CorvelApp app;
    app.set_root("App");
    const std::string root = SOURCE_ROOT "/ext/corvel";
    if (!app.load_assets(root + "/themes", root + "/styles", "Dark (orrinworkshopllc)",
                         {folder.path().string()}))
        throw std::runtime_error("the log does not load");
    Corvel::DesktopView view(app);
    const std::unique_ptr<QWidget> window(view.build());
    window->resize(1000, 700);
    window->show();
    const auto show = [&](bool on) {
        app.set_visible("App/Panel", on);
        view.apply_patches(app.render_patches());
        QCoreApplication::processEvents();
    };
    measure({"log",
             [&](const std::string& chunk) {
                 for (std::size_t at = 0; at < chunk.size();) { // line by line, as from a run
                     const std::size_t end = std::min(chunk.find('\n', at + 1), chunk.size());
                     app.append_text("App/Panel/Log", chunk.substr(at, end - at));
                     at = end;
                 }
                 view.schedule_render();
             },
             [&] { show(false), show(true); }, *window},
            lines);
}

void measure_plain_text(int lines) {
    QWidget window;
    QPlainTextEdit edit(&window);
    edit.setReadOnly(true);
    edit.setUndoRedoEnabled(false);
    window.resize(1000, 700);
    edit.resize(1000, 700);
    window.show();
    measure({"plain text widget",
             [&](const std::string& chunk) {
                 QTextCursor cursor(edit.document());
                 cursor.movePosition(QTextCursor::End);
                 cursor.insertText(QString::fromStdString(chunk));
                 edit.verticalScrollBar()->setValue(edit.verticalScrollBar()->maximum());
             },
             [&] { edit.setPlainText(edit.toPlainText()); }, edit},
            lines);
}

} // namespace

int main(int argc, char** argv) {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const int most = argc > 1 ? std::atoi(argv[1]) : 1'000'000;
    for (const int lines : {most / 10, most}) {
        measure_log(lines);
        measure_plain_text(lines);
    }
    return 0;
}
