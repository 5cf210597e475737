#include "desktop/services/process.h"

#include "desktop/services/async_change.h"
#include "runtime/corvel_app.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPointer>
#include <QProcess>
#include <QStringList>

#include <algorithm>
#include <functional>
#include <utility>

namespace Corvel {

namespace {

/// A program killed at the end is gone at once; one that is not is left behind.
constexpr int QUIT_PATIENCE_MS = 1000;

/// One running program: cuts its output into lines and reports its end once. Lives as long as the
/// process object, whose child it is.
class ProcessRun : public QObject {
public:
    ProcessRun(CorvelApp& app, QProcess* process, CorvelApp::TextHandler on_line,
               std::function<void(int)> on_exit)
        : QObject(process)
        , app_(app)
        , process_(process)
        , on_line_(std::move(on_line))
        , on_exit_(std::move(on_exit)) {}

    void start(const std::vector<std::string>& argv) {
        connect(process_, &QProcess::readyReadStandardOutput, this, [this] { read(); });
        connect(process_, &QProcess::finished, this, [this](int code, QProcess::ExitStatus status) {
            drain();
            flush_last_line();
            end(status == QProcess::CrashExit ? -1 : code);
        });
        connect(process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart)
                end(-1);
        });
        connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, [this] {
            process_->disconnect();
            process_->kill();
            process_->waitForFinished(QUIT_PATIENCE_MS);
        });
        QStringList arguments;
        for (std::size_t i = 1; i < argv.size(); ++i)
            arguments << QString::fromStdString(argv[i]);
        process_->start(resolve_program(argv[0]), arguments);
    }

    /// Nothing more is heard of the program.
    void stop() {
        on_line_ = nullptr;
        on_exit_ = nullptr;
        process_->kill();
    }

private:
    void read() {
        pending_ += process_->readAllStandardOutput();
        drain();
    }

    void pass_line(const char* bytes, qsizetype size) {
        if (const auto handler = on_line_)
            handler(std::string(bytes, static_cast<std::size_t>(size)));
    }

    /// Passes on every whole line. A handler may run an event loop in which more output comes and
    /// the process ends, so each line is taken out first and this object may be gone afterwards.
    void drain() {
        const QPointer<ProcessRun> self(this);
        CorvelApp& app = app_;
        bool any = false;
        for (qsizetype end = pending_.indexOf('\n', std::max(drained_, searched_)); end >= 0;
             end = pending_.indexOf('\n', drained_)) {
            any = true;
            const QByteArray line = pending_.mid(drained_, end - drained_);
            drained_ = end + 1;
            pass_line(line.constData(), line.endsWith('\r') ? line.size() - 1 : line.size());
            if (!self)
                return notify_async_change(app);
        }
        pending_.remove(0, std::exchange(drained_, 0));
        searched_ = pending_.size();
        if (any)
            notify_async_change(app);
    }

    void flush_last_line() {
        if (pending_.isEmpty())
            return;
        searched_ = 0;
        const QByteArray line = std::exchange(pending_, {});
        pass_line(line.constData(), line.size());
    }

    void end(int code) {
        if (std::exchange(finished_once_, true))
            return;
        CorvelApp& app = app_;
        const auto handler = std::exchange(on_exit_, nullptr);
        process_->deleteLater();
        if (handler)
            handler(code);
        notify_async_change(app);
    }

    CorvelApp& app_;
    QProcess* process_;
    CorvelApp::TextHandler on_line_;
    std::function<void(int)> on_exit_;
    QByteArray pending_;     ///< output not yet passed on
    qsizetype drained_ = 0;  ///< bytes of it that are
    qsizetype searched_ = 0; ///< bytes of it that hold no line end, when it was last drained
    bool finished_once_ = false;
};

CorvelApp::Action start_process(CorvelApp& app, const std::vector<std::string>& argv,
                                CorvelApp::TextHandler on_line, std::function<void(int)> on_exit) {
    if (argv.empty()) {
        if (on_exit)
            on_exit(-1);
        return [] {};
    }
    auto* process = new QProcess(QCoreApplication::instance());
    process->setProcessChannelMode(QProcess::MergedChannels);
    const QPointer run = new ProcessRun(app, process, std::move(on_line), std::move(on_exit));
    run->start(argv);
    return [run] {
        if (run)
            run->stop();
    };
}

} // namespace

QString resolve_program(const std::string& name) {
    const QString program = QString::fromStdString(name);
    if (name.find_first_of("/\\") != std::string::npos)
        return program;
    const QString beside = QCoreApplication::applicationDirPath() + QLatin1Char('/') + program;
    for (const QString& candidate : {beside, beside + QLatin1String(".exe")}) {
        const QFileInfo info(candidate);
        if (info.isFile() && info.isExecutable())
            return candidate;
    }
    return program;
}

void install_qt_process(CorvelApp& app) {
    app.process = [&app](const std::vector<std::string>& argv, CorvelApp::TextHandler on_line,
                         std::function<void(int)> on_exit) {
        return start_process(app, argv, std::move(on_line), std::move(on_exit));
    };
}

} // namespace Corvel
