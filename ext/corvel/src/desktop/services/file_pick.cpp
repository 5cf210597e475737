#include "desktop/services/file_pick.h"

#include "runtime/corvel_app.h"

#include <QDir>
#include <QFileDialog>

namespace Corvel {

namespace {

void set_mode(QFileDialog& dialog, const std::string& mode) {
    if (mode == "dir") {
        dialog.setFileMode(QFileDialog::Directory);
        dialog.setOption(QFileDialog::ShowDirsOnly);
    } else if (mode == "save") {
        dialog.setAcceptMode(QFileDialog::AcceptSave);
    } else {
        dialog.setFileMode(QFileDialog::ExistingFile);
    }
}

/// The chosen path, empty if there is none.
std::string pick_path(const PickRequest& request) {
    QFileDialog dialog(nullptr, QString::fromStdString(request.title));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    set_mode(dialog, request.mode);
    if (!request.filter.empty())
        dialog.setNameFilter(QString::fromStdString(request.filter));
    if (request.show_hidden)
        dialog.setFilter(dialog.filter() | QDir::Hidden);
    if (!request.directory.empty())
        dialog.setDirectory(QString::fromStdString(request.directory));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    return dialog.selectedFiles().first().toStdString();
}

} // namespace

void install_qt_file_pick(CorvelApp& app) {
    app.file_pick = [](const PickRequest& request, const CorvelApp::TextHandler& done) {
        const std::string path = pick_path(request);
        if (done)
            done(path);
    };
}

} // namespace Corvel
