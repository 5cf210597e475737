#include "desktop/gallery/picture_compare.h"

#include <gtest/gtest.h>

#include <QDir>
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

} // namespace

std::string difference(const QImage& first, const QImage& second) {
    const QImage actual = first.convertToFormat(QImage::Format_ARGB32);
    const QImage expected = second.convertToFormat(QImage::Format_ARGB32);
    if (actual.size() != expected.size())
        return "it is " + std::to_string(actual.width()) + " x " + std::to_string(actual.height()) +
               " instead of " + std::to_string(expected.width()) + " x " +
               std::to_string(expected.height());
    QRect where;
    int differing = 0;
    for (int y = 0; y < actual.height(); ++y)
        for (int x = 0; x < actual.width(); ++x)
            if (distance(actual.pixel(x, y), expected.pixel(x, y)) > slight) {
                ++differing;
                where |= QRect(x, y, 1, 1);
            }
    if (differing <= tolerated_share * actual.width() * actual.height())
        return {};
    return std::to_string(differing) + " pixels differ, from (" + std::to_string(where.left()) +
           ", " + std::to_string(where.top()) + ") to (" + std::to_string(where.right()) + ", " +
           std::to_string(where.bottom()) + ")";
}

void expect_like_reference(const QImage& picture, const std::string& name) {
    const std::string path = SOURCE_ROOT "/tests/desktop/gallery/references/" + name + ".png";
    if (qEnvironmentVariable("UPDATE_GALLERY") == QLatin1String("1")) {
        ASSERT_TRUE(picture.save(QString::fromStdString(path))) << path;
        return;
    }
    const std::string words = difference(picture, QImage(QString::fromStdString(path)));
    if (words.empty())
        return;
    const QString shown = QDir::current().filePath(QString::fromStdString(name + "-actual.png"));
    picture.save(shown);
    ADD_FAILURE() << name << ": " << words << ". Look at " << shown.toStdString() << " beside "
                  << path << "; if it is right, run with UPDATE_GALLERY=1";
}
