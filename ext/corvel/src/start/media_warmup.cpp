#include "start/media_warmup.h"

#include "desktop/media/media_back_end.h"

#include <QAudioOutput>
#include <QCoreApplication>
#include <QEventLoop>
#include <QMediaPlayer>
#include <QThread>
#include <QTimer>
#include <QVideoSink>

namespace Corvel {
namespace {

constexpr int LOAD_LIMIT_MS = 1500;
constexpr int INTERRUPTION_POLL_MS = 50;
constexpr int QUIT_WAIT_MS = 3000;

void load_back_end() {
    if (!media_back_end_usable())
        return;
    QMediaPlayer player;
    QVideoSink sink;
    QAudioOutput audio;
    player.setVideoSink(&sink);
    player.setAudioOutput(&audio);

    QEventLoop loop;
    QTimer::singleShot(LOAD_LIMIT_MS, &loop, &QEventLoop::quit);
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &loop, [&loop] {
        if (QThread::currentThread()->isInterruptionRequested())
            loop.quit();
    });
    poll.start(INTERRUPTION_POLL_MS);
    loop.exec();

    player.setAudioOutput(nullptr);
    player.setVideoSink(nullptr);
}

} // namespace

void start_media_warmup() {
    QThread* thread = QThread::create(load_back_end);
    thread->setObjectName(QStringLiteral("corvel-mm-warmup"));
    // The thread as context ends the connection when it has deleted itself.
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, thread,
                     [thread] {
                         thread->requestInterruption();
                         thread->wait(QUIT_WAIT_MS);
                     });
    QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start();
}

} // namespace Corvel
