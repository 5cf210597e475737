#include "site/favicon/write_ico.h"

#include <QBuffer>
#include <QByteArray>
#include <QDataStream>
#include <QFile>
#include <QImage>

namespace Lumenfold {

namespace {

constexpr quint32 HEADER_SIZE = 6;
constexpr quint32 ENTRY_SIZE = 16;

QByteArray encode_png(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

void write_entry(QDataStream& out, const QImage& image, quint32 size, quint32 offset) {
    const auto side = static_cast<quint8>(image.width() >= 256 ? 0 : image.width());
    out << side << side;
    out << quint8(0);   // colours of a palette: none
    out << quint8(0);   // reserved
    out << quint16(1);  // planes
    out << quint16(32); // bits per pixel
    out << size << offset;
}

} // namespace

bool write_ico(const QString& path, const std::vector<QImage>& images) {
    std::vector<QByteArray> frames;
    for (const QImage& image : images)
        frames.push_back(encode_png(image));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QDataStream out(&file);
    out.setByteOrder(QDataStream::LittleEndian);
    const auto count = static_cast<quint16>(images.size());
    out << quint16(0) << quint16(1) << count; // reserved, type: icon, frames
    quint32 offset = HEADER_SIZE + ENTRY_SIZE * count;
    for (std::size_t i = 0; i < images.size(); ++i) {
        const auto size = static_cast<quint32>(frames[i].size());
        write_entry(out, images[i], size, offset);
        offset += size;
    }
    for (const QByteArray& frame : frames)
        out.writeRawData(frame.constData(), static_cast<int>(frame.size()));
    return out.status() == QDataStream::Ok && file.flush();
}

} // namespace Lumenfold
