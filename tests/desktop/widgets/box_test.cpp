#include "desktop/widgets/root_container.h"
#include "desktop/widgets/vbox_widget.h"
#include "desktop/widgets/widget_support.h"
#include "desktop/widgets/wrap_label.h"

#include <gtest/gtest.h>

#include <QMouseEvent>
#include <QPointer>
#include <QTest>

#include <vector>

using namespace Corvel;

TEST(Box, TheBorderLiesWithinAndTheFillBelowIt) {
    VBoxWidget box;
    box.resize(40, 10);
    box.set_style(styled([](NodeStyle& s) {
        s.fill = {"#ff0000", false};
        s.border_fill = {"#0000ff", false};
        s.border_thickness = 3;
    }));
    const QImage image = picture_of(box);
    for (int y = 0; y < 10; ++y) {
        const bool on_border = y < 3 || y >= 7;
        EXPECT_EQ(color_at(image, 20, y), on_border ? "#ff0000ff" : "#ffff0000") << y;
    }
    EXPECT_EQ(color_at(image, 2, 5), "#ff0000ff");
    EXPECT_EQ(color_at(image, 3, 5), "#ffff0000");
}

TEST(Box, GradientsRunFromTopToBottom) {
    VBoxWidget box;
    box.resize(20, 101);
    box.set_style(styled([](NodeStyle& s) { s.fill = {"0:#000000,1:#ffffff", true}; }));
    const QImage image = picture_of(box);
    EXPECT_LT(image.pixelColor(10, 0).red(), 4);
    EXPECT_NEAR(image.pixelColor(10, 50).red(), 127, 3);
    EXPECT_GT(image.pixelColor(10, 100).red(), 251);
    EXPECT_EQ(image.pixelColor(1, 50), image.pixelColor(18, 50));
}

TEST(Box, CornersAndOpacity) {
    VBoxWidget box;
    box.resize(40, 40);
    box.set_style(styled([](NodeStyle& s) {
        s.fill = {"#ffffff", false};
        s.radius_top_left = s.radius_bottom_right = 12;
    }));
    box.set_opacity(0.5);
    QImage image = picture_of(box);
    EXPECT_EQ(color_at(image, 1, 1), "#00000000");
    EXPECT_NEAR(image.pixelColor(38, 1).alpha(), 128, 1);
    EXPECT_EQ(color_at(image, 38, 38), "#00000000");
    EXPECT_NEAR(image.pixelColor(1, 38).alpha(), 128, 1);
    box.set_opacity(-1);
    EXPECT_EQ(color_at(picture_of(box), 20, 20), "#00000000");
}

TEST(Box, AnyButtonClicksOnPress) {
    VBoxWidget box;
    box.resize(40, 40);
    int clicks = 0;
    box.on_click = [&] { ++clicks; };
    for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
        QTest::mousePress(&box, button);
    EXPECT_EQ(clicks, 3);
    QTest::mouseRelease(&box, Qt::LeftButton);
    QTest::mouseMove(&box);
    EXPECT_EQ(clicks, 3);
}

TEST(Box, AClickHandlerMayReplaceItselfOrEndTheBox) {
    auto* box = new VBoxWidget;
    QPointer<VBoxWidget> alive(box);
    const auto captured = std::make_shared<int>(1);
    int seen = 0;
    box->on_click = [&, captured] {
        box->on_click = nullptr;
        box->deleteLater();
        QCoreApplication::sendPostedEvents(box, QEvent::DeferredDelete);
        seen = *captured;
    };
    QTest::mousePress(box, Qt::LeftButton);
    EXPECT_EQ(seen, 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return alive.isNull(); }));
}

TEST(Box, APressOnALabelOrAPlainBoxReachesTheButtonBeneath) {
    VBoxWidget button;
    button.resize(100, 40);
    VBoxWidget plain(&button);
    plain.setGeometry(0, 0, 50, 40);
    WrapLabel label(&button);
    label.setGeometry(50, 0, 50, 40);
    int clicks = 0;
    button.on_click = [&] { ++clicks; };
    button.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&button));
    for (const QPoint at : {QPoint(25, 20), QPoint(75, 20)})
        QTest::mousePress(button.windowHandle(), Qt::LeftButton, {}, at);
    EXPECT_EQ(clicks, 2);
}

TEST(Box, ThePointerShowsWhichEdgeWouldMove) {
    VBoxWidget box;
    box.resize(100, 60);
    box.window_resize = true;
    box.setMouseTracking(true);
    struct Case {
        QPoint at;
        Qt::CursorShape shape;
    };
    const std::vector<Case> cases = {
        {{8, 30}, Qt::SizeHorCursor},   {{9, 30}, Qt::ArrowCursor},
        {{91, 30}, Qt::ArrowCursor},    {{92, 30}, Qt::SizeHorCursor},
        {{50, 8}, Qt::SizeVerCursor},   {{50, 9}, Qt::ArrowCursor},
        {{50, 52}, Qt::SizeVerCursor},  {{50, 51}, Qt::ArrowCursor},
        {{0, 0}, Qt::SizeFDiagCursor},  {{99, 59}, Qt::SizeFDiagCursor},
        {{99, 8}, Qt::SizeBDiagCursor}, {{8, 52}, Qt::SizeBDiagCursor},
    };
    for (const Case& c : cases) {
        QMouseEvent move(QEvent::MouseMove, c.at, c.at, Qt::NoButton, Qt::NoButton, {});
        QCoreApplication::sendEvent(&box, &move);
        EXPECT_EQ(box.cursor().shape(), c.shape) << c.at.x() << ", " << c.at.y();
    }
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&box, &leave);
    EXPECT_EQ(box.cursor().shape(), Qt::ArrowCursor);
}

TEST(Root, TellsEachWidthAndAChangeOfState) {
    RootContainer root;
    std::vector<int> widths;
    std::vector<bool> states;
    root.on_width_changed = [&](int width) { widths.push_back(width); };
    root.on_maximized_changed = [&](bool on) { states.push_back(on); };
    root.resize(300, 200);
    root.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&root));
    root.showMaximized();
    root.showNormal();
    ASSERT_FALSE(widths.empty());
    EXPECT_EQ(widths.front(), 300);
    EXPECT_EQ(states, (std::vector<bool>{true, false}));
}
