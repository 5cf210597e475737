#include "start/desktop_slots.h"

#include "runtime/corvel_app.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QFile>
#include <QFileDialog>
#include <QStandardPaths>
#include <QTimer>
#include <QUrl>

namespace Corvel {
namespace {

void copy_to_clipboard(const std::string& text) {
    if (QClipboard* clipboard = QGuiApplication::clipboard())
        clipboard->setText(QString::fromStdString(text));
}

/// What an address given to the system means; an invalid one if it is not to be opened.
QUrl url_to_open(const QString& address) {
    // Behind "file://" stands a path as it is: "#", "?" and "%41" are characters of names there.
    const QString file = QStringLiteral("file://");
    if (address.startsWith(file))
        return QUrl::fromLocalFile(address.mid(file.size()));
    const QUrl url(address);
    const QStringList schemes{QStringLiteral("http"), QStringLiteral("https"),
                              QStringLiteral("mailto")};
    return schemes.contains(url.scheme()) ? url : QUrl();
}

/// Asks for a file and writes it. Whether every byte arrived; false if cancelled.
bool save_text(const std::string& name, const std::string& content) {
    const QString start = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) +
                          u'/' + QString::fromStdString(name);
    const QString path = QFileDialog::getSaveFileName(nullptr, QStringLiteral("Save"), start);
    if (path.isEmpty())
        return false;
    QFile file(path);
    const auto size = static_cast<qint64>(content.size());
    return file.open(QIODevice::WriteOnly) && file.write(content.data(), size) == size &&
           file.flush();
}

/// Runs work that ended outside a view event and tells the view of it.
void run_and_announce(CorvelApp& app, const CorvelApp::Action& fn) {
    if (fn)
        fn();
    if (app.on_async_change)
        app.on_async_change();
}

} // namespace

void install_desktop_slots(CorvelApp& app) {
    app.open_url = [](const std::string& url) {
        if (const QUrl target = url_to_open(QString::fromStdString(url)); target.isValid())
            QDesktopServices::openUrl(target);
    };
    app.copy_text = copy_to_clipboard;
    app.save_text_file = [](const std::string& name, const std::string&, const std::string& content,
                            const std::function<void(bool)>& done) {
        const bool saved = save_text(name, content);
        if (done)
            done(saved);
    };
    app.run_after = [&app](int milliseconds, const CorvelApp::Action& fn) {
        QTimer::singleShot(milliseconds, qApp, [&app, fn] { run_and_announce(app, fn); });
    };
    app.data_folder =
        QStandardPaths::writableLocation(QStandardPaths::AppDataLocation).toStdString();
    app.post = [&app](const CorvelApp::Action& fn) {
        QMetaObject::invokeMethod(
            qApp, [&app, fn] { run_and_announce(app, fn); }, Qt::QueuedConnection);
    };
}

} // namespace Corvel
