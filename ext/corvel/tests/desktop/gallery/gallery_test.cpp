#include "desktop/desktop_view.h"
#include "desktop/media/asset_paths.h"
#include "layers/log.h"
#include "runtime/corvel_app.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QLayout>
#include <QPainter>
#include <QScrollArea>
#include <QTest>
#include <QVariantAnimation>

#include <algorithm>
#include <memory>
#include <string>

using namespace Corvel;

namespace {

const char* const dark = "Dark (orrinworkshopllc)";
const char* const light = "Light (orrinworkshopllc)";

/// How many pixels of a tile differ by more than anti-aliasing does.
int differing(const QImage& one, const QImage& other, const QRect& tile) {
    int count = 0;
    for (int y = tile.top(); y <= tile.bottom(); ++y)
        for (int x = tile.left(); x <= tile.right(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            count += std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                               std::abs(qBlue(a) - qBlue(b))}) > 24;
        }
    return count;
}

/// The first tile where the pictures look different, empty if there is none.
QRect difference(const QImage& one, const QImage& other) {
    constexpr int side = 32;
    constexpr int tolerated = 10; // pixels of a tile: fonts are not drawn alike everywhere
    if (one.size() != other.size())
        return one.rect();
    for (int y = 0; y < one.height(); y += side)
        for (int x = 0; x < one.width(); x += side) {
            const QRect tile = QRect(x, y, side, side) & one.rect();
            if (differing(one, other, tile) > tolerated)
                return tile;
        }
    return {};
}

/// Compares a picture with references/`name`.png. With UPDATE_GALLERY=1 in the environment it
/// becomes the reference.
void expect_like_reference(const QImage& picture, const std::string& name) {
    const std::string path = SOURCE_ROOT "/tests/desktop/gallery/references/" + name + ".png";
    if (qEnvironmentVariable("UPDATE_GALLERY") == QLatin1String("1")) {
        ASSERT_TRUE(picture.save(QString::fromStdString(path))) << path;
        return;
    }
    const QRect where = difference(picture, QImage(QString::fromStdString(path)));
    if (where.isEmpty())
        return;
    const QString shown = QDir::current().filePath(QString::fromStdString(name + "-actual.png"));
    picture.save(shown);
    ADD_FAILURE() << "Look at " << shown.toStdString() << " beside " << path << " around "
                  << where.x() << ", " << where.y()
                  << "; if it is right, run with UPDATE_GALLERY=1";
}

/// The page of gallery.lyr in a window.
class Gallery {
public:
    explicit Gallery(const std::string& theme) {
        write_media();
        const Layers::LogSink earlier = Layers::set_log_sink(
            [](const std::string& line) { ADD_FAILURE() << "logged: " << line; });
        const std::string root = SOURCE_ROOT;
        EXPECT_TRUE(app_.load_assets(root + "/themes", root + "/styles", theme,
                                     {root + "/tests/desktop/gallery"}));
        Layers::set_log_sink(earlier);
        app_.set_root("Gallery");
        app_.add_global_state("Desktop");
        fill_in();
        view_ = std::make_unique<DesktopView>(app_);
        window_.reset(view_->build());
    }

    /// The whole page at a width, with everything at rest.
    QImage page(int width) {
        window_->resize(width, 400);
        window_->show();
        rest();
        const QWidget* content = window_->findChild<QScrollArea*>()->widget();
        for (int pass = 0; pass < 3; ++pass) {
            window_->resize(width, content->layout()->totalHeightForWidth(width));
            rest();
        }
        EXPECT_LE(content->minimumSizeHint().width(), width) << "something is cut off";
        return flat(*window_);
    }

    QImage dialog() {
        app_.set_visible("Gallery/Dialog", true);
        render();
        const QImage picture = flat(*QApplication::activeModalWidget());
        app_.set_visible("Gallery/Dialog", false);
        render();
        return picture;
    }

    void set_theme(const std::string& theme) {
        EXPECT_TRUE(app_.set_theme(theme));
        render();
    }

private:
    void write_media() {
        QImage flag(300, 200, QImage::Format_RGB32);
        flag.fill(QColor(0x2f, 0x6f, 0xb0));
        QPainter(&flag).fillRect(100, 0, 100, 200, QColor(0xe8, 0xe8, 0xe8));
        QPainter(&flag).fillRect(200, 0, 100, 200, QColor(0xc0, 0x50, 0x40));
        flag.save(QString::fromStdString((media_ / "flag.png").string()));
        TestSupport::write_file(media_ / "drawing.svg",
                                R"(<svg xmlns="http://www.w3.org/2000/svg" width="40" height="20">)"
                                R"(<rect id="a" width="20" height="20" fill="#000"/>)"
                                R"(<circle cx="30" cy="10" r="8" fill="#c05040"/></svg>)");
        set_icon_dirs({SOURCE_ROOT "/icons"});
        set_media_dirs({media_.path().string(), SOURCE_ROOT "/tests/desktop/widgets/data"});
    }

    void fill_in() {
        app_.set_visible("Gallery/Dialog", false);
        app_.add_state("Gallery/Buttons/Row/Disabled", "Disabled");
        app_.add_state("Gallery/Buttons/Checks/Dim", "Disabled");
        app_.set_checked("Gallery/Buttons/Checks/On", true);
        app_.add_state("Gallery/Fields/More/Locked", "Locked");
        app_.set_options("Gallery/Fields/More/Combo", {{"a", "First choice"}, {"b", "Second"}});
        const std::string code = "{\n  \"title\": \"A long line that reaches beyond the edge\"\n}";
        app_.set_text("Gallery/Fields/Lines/Wrapped", code);
        app_.set_text("Gallery/Fields/Lines/Unwrapped", code);
        std::string log;
        for (int line = 1; line <= 40; ++line)
            log += "line " + std::to_string(line) + " of the log\n";
        app_.set_text("Gallery/Fields/Lines/Log", log);
        app_.set_text("Gallery/Formatted/Body",
                      "# Heading\n\nA paragraph with **strong**, *stressed* and `code` words and a "
                      "[link](https://example.org).\n\n- one\n- two\n  - nested\n\n1. first\n2. "
                      "second\n\n> quoted\n\n```\nint main() {}\n```\n\n| Name | Value |\n| --- | "
                      "--- |\n| a | 1 |\n");
    }

    void render() {
        app_.on_async_change();
        rest();
    }

    /// Waits until nothing moves and no caret blinks.
    void rest() {
        QTest::qWait(1);
        if (QWidget* focused = QApplication::focusWidget())
            focused->clearFocus();
        EXPECT_TRUE(QTest::qWaitFor([this] {
            const auto movements = window_->findChildren<QVariantAnimation*>();
            return std::none_of(movements.begin(), movements.end(), [](const auto* movement) {
                return movement->state() == QAbstractAnimation::Running;
            });
        }));
        QTest::qWait(1);
    }

    /// The widget's picture; where it is transparent, over grey.
    static QImage flat(QWidget& widget) {
        QImage image(widget.size(), QImage::Format_RGB32);
        image.fill(QColor(0x80, 0x80, 0x80));
        widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
        return image;
    }

    TestSupport::TempDir media_;
    CorvelApp app_;
    std::unique_ptr<DesktopView> view_;
    std::unique_ptr<QWidget> window_;
};

} // namespace

TEST(GalleryPictures, EachThemeAtEachWidth) {
    for (const auto& [theme, name] : {std::pair(dark, "dark"), std::pair(light, "light")}) {
        Gallery gallery(theme);
        for (const auto& [width, pixels] :
             {std::pair("-wide", 1000), std::pair("-medium", 760), std::pair("-narrow", 520)})
            expect_like_reference(gallery.page(pixels), std::string(name) + width);
        expect_like_reference(gallery.dialog(), std::string(name) + "-dialog");
    }
}

TEST(GalleryPictures, OtherWidthsAndAnotherThemeBeforeLeaveNoTrace) {
    Gallery gallery(light);
    gallery.page(520);
    gallery.set_theme(dark);
    gallery.page(760);
    expect_like_reference(gallery.page(1000), "dark-wide");
}
