#include "start/theme_directories.h"

#include <QApplication>
#include <QFileDialog>
#include <QSettings>
#include <QString>

namespace Corvel {
namespace {

constexpr const char* DIRECTORIES = "themes/directories";

std::vector<std::string> read_directories() {
    std::vector<std::string> directories;
    const QStringList stored = QSettings().value(QLatin1String(DIRECTORIES)).toStringList();
    for (const QString& directory : stored)
        directories.push_back(directory.toStdString());
    return directories;
}

void write_directories(const std::vector<std::string>& directories) {
    QStringList list;
    for (const std::string& directory : directories)
        list.append(QString::fromStdString(directory));
    QSettings().setValue(QLatin1String(DIRECTORIES), list);
}

void choose_directory(const std::function<void(const std::string&)>& done) {
    const QString directory = QFileDialog::getExistingDirectory(
        QApplication::activeModalWidget(), QStringLiteral("Add Theme Directory"), QString(),
        QFileDialog::ShowDirsOnly);
    done(directory.toStdString());
}

} // namespace

ThemeSourceServices desktop_theme_source_services() {
    ThemeSourceServices services;
    services.read_directories = read_directories;
    services.write_directories = write_directories;
    services.choose_directory = choose_directory;
    services.environment_directory = qEnvironmentVariable("CORVEL_THEME_DIR").toStdString();
    return services;
}

} // namespace Corvel
