#include "desktop/widgets/qr_widget.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QWidget>

#include <random>
#include <string>
#include <vector>

using namespace Corvel;

namespace {

/// What a reader makes of the pictures, one behind the other. Bytes as they are: left to itself it
/// guesses at encodings.
std::string decoded(const QStringList& pictures) {
    QProcess reader;
    reader.start(QStringLiteral("zbarimg"),
                 QStringList{QStringLiteral("--raw"), QStringLiteral("--quiet"),
                             QStringLiteral("-Sdisable"), QStringLiteral("-Sqrcode.enable"),
                             QStringLiteral("-Sbinary")} +
                     pictures);
    reader.waitForFinished(60000);
    return reader.readAllStandardOutput().toStdString();
}

/// A window's picture with the code at a number of pixels a module, within a quiet zone.
QImage picture_of_code(const std::string& text, double module_px) {
    QWidget window;
    window.setStyleSheet(QStringLiteral("background: white;"));
    QrWidget qr(&window);
    qr.set_data(text);
    const int quiet = int(4 * module_px) + 1;
    const int side = int(qr.size * module_px + 0.5);
    NodeStyle style;
    style.fill = {"#ffffff", false};
    style.padding_left = style.padding_top = style.padding_right = style.padding_bottom = quiet;
    qr.set_style(style);
    qr.setGeometry(3, 5, side + 2 * quiet, side + 2 * quiet);
    window.resize(qr.width() + 8, qr.height() + 9);
    return window.grab().toImage();
}

std::string text_of(std::size_t bytes, std::mt19937& random) {
    static const std::string letters =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789:/?#&=._-";
    std::uniform_int_distribution<std::size_t> pick(0, letters.size() - 1);
    std::string text;
    while (text.size() < bytes)
        text += letters[pick(random)];
    return text;
}

} // namespace

TEST(QrDecoding, CodesAreReadFromAScreenshot) {
    if (QStandardPaths::findExecutable(QStringLiteral("zbarimg")).isEmpty())
        GTEST_SKIP() << "zbarimg is not installed";
    std::mt19937 random(11);
    std::vector<std::string> texts;
    for (const std::size_t bytes : {1, 2, 3, 10, 17, 33, 50, 80, 120, 180, 250, 330, 420, 500})
        texts.push_back(text_of(bytes, random));
    texts.insert(texts.end(),
                 {"https://example.org/pfad/übersicht?größe=1", "日本語のドキュメント、案内",
                  "Ω≈ç√∫ — 🙂🙃", "naïve café", "Документация для проекта"});
    TestSupport::TempDir dir;
    for (const double module_px : {3.0, 3.5, 7.3}) {
        SCOPED_TRACE(module_px);
        QStringList files;
        std::string expected;
        for (std::size_t i = 0; i < texts.size(); ++i) {
            files << QString::fromStdString((dir / (std::to_string(i) + ".png")).string());
            expected += texts[i];
            ASSERT_TRUE(picture_of_code(texts[i], module_px).save(files.back()));
        }
        EXPECT_EQ(decoded(files), expected);
    }
}
