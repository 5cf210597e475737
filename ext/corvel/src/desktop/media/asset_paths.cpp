#include "desktop/media/asset_paths.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QHash>

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
    struct Known {
        QString path;
        QDateTime changed;
        qint64 size = 0;
        QString text;
    };
    static QHash<QString, Known> known_icons; // a list shows one icon a thousand times
    for (const std::string& dir : icon_dirs()) {
        const QFileInfo info(in_dir(dir, name + ".svg"));
        if (!info.isFile())
            continue;
        Known& known = known_icons[QString::fromStdString(name)];
        if (known.path == info.filePath() && known.size == info.size() &&
            known.changed == info.lastModified())
            return known.text;
        QFile file(info.filePath());
        if (!file.open(QIODevice::ReadOnly))
            continue;
        known = {info.filePath(), info.lastModified(), info.size(),
                 QString::fromUtf8(file.readAll())};
        return known.text;
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
