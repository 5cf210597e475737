// Draws frames of animated SVG files in a grid: a row for each file, a column for each time.
//
//   draw_frames OUTPUT.png CELL_SIZE "MS,MS,..." FILE.svg...

#include "svg/svg_animation.h"

#include <QColor>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QRectF>
#include <QStringList>
#include <QSvgRenderer>

#include <cstdio>

namespace {

bool draw_row(QPainter& painter, const QString& file, const QStringList& times, int row, int size) {
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly))
        return false;
    const Corvel::SvgAnimation animation(source.readAll().toStdString());
    for (int column = 0; column < times.size(); ++column) {
        const std::string frame = animation.frame_at(times[column].toDouble());
        QSvgRenderer renderer(QByteArray::fromStdString(frame));
        const QRectF cell(column * size, row * size, size, size);
        painter.setClipRect(cell);
        renderer.render(&painter, cell);
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() < 5) {
        std::fputs("usage: draw_frames OUTPUT.png CELL_SIZE MS,MS,... FILE.svg...\n", stderr);
        return 2;
    }
    const int size = arguments[2].toInt();
    const QStringList times = arguments[3].split(QLatin1Char(','));
    const QStringList files = arguments.mid(4);
    QImage image(size * int(times.size()), size * int(files.size()), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int row = 0; row < files.size(); ++row)
        if (!draw_row(painter, files[row], times, row, size))
            return 1;
    painter.end();
    return image.save(arguments[1]) ? 0 : 1;
}
