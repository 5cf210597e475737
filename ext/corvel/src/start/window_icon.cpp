#include "start/window_icon.h"

#include "desktop/media/asset_paths.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace Corvel {
namespace {

constexpr int SIZES[] = {16, 24, 32, 48, 64, 128, 256};

QIcon icon_from_png(const std::string& name) {
    QIcon icon;
    const QPixmap picture(QString::fromStdString(resolve_icon_path(name)));
    if (picture.isNull())
        return icon;
    for (const int size : SIZES)
        icon.addPixmap(picture.scaled(size, size, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    return icon;
}

QIcon icon_from_svg(const std::string& name) {
    QIcon icon;
    const QString text = load_icon_text(name);
    if (text.isEmpty())
        return icon;
    QSvgRenderer renderer(text.toUtf8());
    for (const int size : SIZES) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        renderer.render(&painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace

QIcon load_window_icon(const std::string& name) {
    const QString text = QString::fromStdString(name);
    return text.endsWith(QLatin1String(".png"), Qt::CaseInsensitive) ? icon_from_png(name)
                                                                     : icon_from_svg(name);
}

} // namespace Corvel
