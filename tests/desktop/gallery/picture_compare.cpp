#include "desktop/gallery/picture_compare.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QString>

#include <algorithm>
#include <cstdlib>

namespace {

/// Channel differences up to this are anti-aliasing.
constexpr int slight = 24;
/// The share of pixels that may differ by more.
constexpr double tolerated_share = 0.0005;

int distance(QRgb a, QRgb b) {
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                     std::abs(qBlue(a) - qBlue(b)), std::abs(qAlpha(a) - qAlpha(b))});
}

QString reference_path(const std::string& name) {
    return QString::fromStdString(SOURCE_ROOT "/tests/desktop/gallery/references/" + name + ".png");
}

bool updating() {
    const char* value = std::getenv("UPDATE_GALLERY");
    return value && std::string(value) == "1";
}

} // namespace

std::string difference(const QImage& first, const QImage& second) {
    const QImage actual = first.convertToFormat(QImage::Format_ARGB32);
    const QImage expected = second.convertToFormat(QImage::Format_ARGB32);
    const auto size = [](const QImage& image) {
        return std::to_string(image.width()) + " x " + std::to_string(image.height());
    };
    if (actual.size() != expected.size())
        return "it is " + size(actual) + " instead of " + size(expected);
    QRect where;
    int differing = 0;
    for (int y = 0; y < actual.height(); ++y) {
        const auto* one = reinterpret_cast<const QRgb*>(actual.constScanLine(y));
        const auto* other = reinterpret_cast<const QRgb*>(expected.constScanLine(y));
        for (int x = 0; x < actual.width(); ++x)
            if (one[x] != other[x] && distance(one[x], other[x]) > slight) {
                ++differing;
                where |= QRect(x, y, 1, 1);
            }
    }
    if (differing <= tolerated_share * actual.width() * actual.height())
        return {};
    return std::to_string(differing) + " pixels differ, from (" + std::to_string(where.left()) +
           ", " + std::to_string(where.top()) + ") to (" + std::to_string(where.right()) + ", " +
           std::to_string(where.bottom()) + ")";
}

void expect_like_reference(const QImage& picture, const std::string& name) {
    const QString path = reference_path(name);
    if (updating()) {
        QDir().mkpath(QFileInfo(path).path());
        ASSERT_TRUE(picture.save(path)) << path.toStdString();
        return;
    }
    const QImage expected(path);
    ASSERT_FALSE(expected.isNull())
        << "no reference " << path.toStdString() << "; run with UPDATE_GALLERY=1 to make it";
    const std::string words = difference(picture, expected);
    if (words.empty())
        return;
    const QString shown =
        QDir::current().filePath(QString::fromStdString(name) + QLatin1String("-actual.png"));
    picture.save(shown);
    ADD_FAILURE() << name << ": " << words << ". Look at " << shown.toStdString() << " beside "
                  << path.toStdString() << "; if it is right, run with UPDATE_GALLERY=1";
}
