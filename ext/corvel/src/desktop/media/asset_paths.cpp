#include "desktop/media/asset_paths.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace Corvel {

namespace {

using DirList = std::vector<std::string>;

DirList& icon_dirs() {
    static DirList dirs;
    return dirs;
}

DirList& media_dirs() {
    static DirList dirs;
    return dirs;
}

QString in_dir(const std::string& dir, const std::string& name) {
    return QString::fromStdString(dir + '/' + name);
}

/// The path of the file `name` in the first of `dirs` that has it.
QString find_file(const DirList& dirs, const std::string& name) {
    for (const std::string& dir : dirs) {
        const QString path = in_dir(dir, name);
        if (QFileInfo(path).isFile())
            return path;
    }
    return {};
}

} // namespace

void set_icon_dirs(std::vector<std::string> dirs) {
    icon_dirs() = std::move(dirs);
}

void set_media_dirs(std::vector<std::string> dirs) {
    media_dirs() = std::move(dirs);
}

QString load_icon_text(const std::string& name) {
    for (const std::string& dir : icon_dirs()) {
        QFile file(in_dir(dir, name + ".svg"));
        if (file.open(QIODevice::ReadOnly))
            return QString::fromUtf8(file.readAll());
    }
    return {};
}

std::string resolve_icon_path(const std::string& name) {
    return find_file(icon_dirs(), name).toStdString();
}

QString resolve_media_path(const std::string& path) {
    if (path.empty())
        return {};
    const QString as_given = QString::fromStdString(path);
    const QFileInfo info(as_given);
    if (info.isAbsolute())
        return info.isFile() ? as_given : QString();
    return find_file(media_dirs(), path);
}

} // namespace Corvel
