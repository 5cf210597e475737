#include "desktop/widgets/qr_widget.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QStandardPaths>
#include <QWidget>

#include <string>
#include <vector>

using namespace Corvel;

namespace {

/// What a reader makes of the pictures, one behind the other. Bytes as they are: left to itself it
/// guesses at encodings.
std::string decoded(const QString& pictures) {
    QProcess reader;
    reader.startCommand(
        QStringLiteral("zbarimg --raw --quiet -Sdisable -Sqrcode.enable -Sbinary ") + pictures);
    reader.waitForFinished(60000);
    return reader.readAllStandardOutput().toStdString();
}

/// A window's picture with the code at a number of pixels a module, within a quiet zone.
QPixmap picture_of_code(const std::string& text, double module_px) {
    QWidget window;
    QrWidget qr(&window);
    qr.set_data(text);
    const double quiet = int(4 * module_px) + 1;
    const int side = int(qr.size * module_px + 0.5) + 2 * int(quiet);
    qr.set_style(NodeStyle{.fill = {"#ffffff"},
                           .padding_left = quiet,
                           .padding_top = quiet,
                           .padding_right = quiet,
                           .padding_bottom = quiet});
    qr.setGeometry(3, 5, side, side);
    window.resize(side + 8, side + 9);
    return window.grab();
}

} // namespace

TEST(QrDecoding, CodesAreReadFromAScreenshot) {
    if (QStandardPaths::findExecutable(QStringLiteral("zbarimg")).isEmpty())
        GTEST_SKIP() << "zbarimg is not installed";
    std::vector<std::string> texts = {"https://example.org/pfad/übersicht?größe=1",
                                      "日本語のドキュメント、案内", "Ω≈ç√∫ — 🙂🙃",
                                      "naïve café", "Документация для проекта"};
    for (const std::size_t bytes : {1, 2, 3, 10, 17, 33, 50, 80, 120, 180, 250, 330, 420, 500}) {
        texts.emplace_back();
        while (texts.back().size() < bytes)
            texts.back() += char('!' + texts.back().size() * 37 % 90);
    }
    TestSupport::TempDir dir;
    for (const double module_px : {3.0, 3.5, 7.3}) {
        SCOPED_TRACE(module_px);
        QString files;
        std::string expected;
        for (std::size_t i = 0; i < texts.size(); ++i) {
            const QString file =
                QString::fromStdString((dir / std::to_string(i)).string() + ".png");
            ASSERT_TRUE(picture_of_code(texts[i], module_px).save(file));
            files += file + QLatin1Char(' ');
            expected += texts[i];
        }
        EXPECT_EQ(decoded(files), expected);
    }
}

TEST(QrDecoding, EncodesWhatFits) {
    const std::pair<std::size_t, int> cases[] = {{5, 21}, {2331, 177}, {2332, 0}, {0, 0}};
    QrWidget qr;
    for (const auto& [bytes, size] : cases) {
        qr.set_data(std::string(bytes, 'a'));
        EXPECT_EQ(qr.size, size) << bytes;
    }
}
