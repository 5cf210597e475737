#include "desktop/desktop_view.h"
#include "desktop/gallery/picture_compare.h"
#include "desktop/media/asset_paths.h"
#include "layers/log.h"
#include "runtime/corvel_app.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLayout>
#include <QPainter>
#include <QScrollArea>
#include <QTest>
#include <QVariantAnimation>
#include <QWidget>

#include <memory>
#include <string>
#include <vector>

using namespace Corvel;

namespace {

const char* const dark = "Dark (orrinworkshopllc)";
const char* const light = "Light (orrinworkshopllc)";

std::string numbered_lines(int count) {
    std::string text;
    for (int i = 1; i <= count; ++i)
        text += "line " + std::to_string(i) + " of the log\n";
    return text;
}

/// Three bars, wider than high.
QImage flag() {
    QImage image(300, 200, QImage::Format_RGB32);
    image.fill(QColor(0x2f, 0x6f, 0xb0));
    QPainter painter(&image);
    painter.fillRect(100, 0, 100, 200, QColor(0xe8, 0xe8, 0xe8));
    painter.fillRect(200, 0, 100, 200, QColor(0xc0, 0x50, 0x40));
    return image;
}

/// The page of tests/desktop/gallery/gallery.lyr in a window.
class Gallery {
public:
    explicit Gallery(const std::string& theme) {
        write_media();
        const Layers::LogSink earlier = Layers::set_log_sink(
            [](const std::string& line) { ADD_FAILURE() << "logged: " << line; });
        const std::string root = SOURCE_ROOT;
        EXPECT_TRUE(app_.load_assets(root + "/ext/corvel/themes", root + "/ext/corvel/styles",
                                     theme, {root + "/tests/desktop/gallery"}));
        Layers::set_log_sink(earlier);
        EXPECT_EQ(app_.active_theme(), theme);
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
        EXPECT_EQ(window_->width(), width);
        EXPECT_LE(content->minimumSizeHint().width(), width) << "something is cut off";
        return flat(*window_);
    }

    QImage dialog() {
        app_.set_visible("Gallery/Dialog", true);
        render();
        QWidget* open = QApplication::activeModalWidget();
        const QImage picture = flat(*open);
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
        flag().save(QString::fromStdString((media_ / "flag.png").string()));
        TestSupport::write_file(media_ / "drawing.svg",
                                R"(<svg xmlns="http://www.w3.org/2000/svg" width="40" height="20">)"
                                R"(<rect id="a" width="20" height="20" fill="#000"/>)"
                                R"(<circle cx="30" cy="10" r="8" fill="#c05040"/></svg>)");
        set_icon_dirs({SOURCE_ROOT "/ext/corvel/icons"});
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
        app_.set_text("Gallery/Fields/Lines/Log", numbered_lines(40));
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
            for (const auto* movement : window_->findChildren<QVariantAnimation*>())
                if (movement->state() == QAbstractAnimation::Running)
                    return false;
            return true;
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

TEST(GalleryPictures, TheComparisonSeesAFault) {
    QImage picture(200, 100, QImage::Format_ARGB32);
    picture.fill(Qt::white);
    QImage shifted = picture;
    QPainter(&picture).fillRect(20, 20, 30, 10, Qt::black);
    QPainter(&shifted).fillRect(20, 21, 30, 10, Qt::black);
    EXPECT_EQ(difference(picture, shifted), "60 pixels differ, from (20, 20) to (49, 30)");
    EXPECT_EQ(difference(picture, QImage()), "it is 200 x 100 instead of 0 x 0");
    QImage slightly = picture;
    slightly.setPixelColor(100, 50, Qt::red);
    EXPECT_EQ(difference(picture, slightly), "");
}
