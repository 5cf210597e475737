#include "desktop/widgets/combo_widget.h"
#include "desktop/widgets/widget_support.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QComboBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using namespace Corvel;

namespace {

const std::vector<ComboItem> three = {{"a", "Alpha"}, {"b", "Beta"}, {"B", "Other Beta"}};

SharedStyle combo_style() {
    return styled([](NodeStyle& s) {
        s.fill = {"#202020", false};
        s.border_fill = {"#404040", false};
        s.border_thickness = 1;
        s.text_color = "#eeeeee";
        s.padding_left = s.padding_right = 10;
        s.padding_top = s.padding_bottom = 4;
        s.font_size = 20;
    });
}

} // namespace

TEST(Combo, ShowsTheSelectedValueByExactCase) {
    ComboWidget box;
    apply_combo_style(&box, combo_style(), three, "B");
    EXPECT_EQ(box.combo->currentText().toStdString(), "Other Beta");
    apply_combo_style(&box, combo_style(), three, "b");
    EXPECT_EQ(box.combo->currentText().toStdString(), "Beta");
    apply_combo_style(&box, combo_style(), three, "unknown");
    EXPECT_EQ(box.combo->currentText().toStdString(), "Beta");
    box.show_value("a");
    EXPECT_EQ(box.combo->currentText().toStdString(), "Alpha");
    apply_combo_style(&box, combo_style(), {}, "a");
    EXPECT_EQ(box.combo->currentIndex(), -1);
}

TEST(Combo, AnUnchangedListIsNotRebuilt) {
    ComboWidget box;
    apply_combo_style(&box, combo_style(), three, "a");
    QSignalSpy rebuilt(box.combo->model(), &QAbstractItemModel::rowsInserted);
    QSignalSpy moved(box.combo, &QComboBox::currentIndexChanged);
    apply_combo_style(&box, combo_style(), three, "a");
    EXPECT_EQ(rebuilt.count() + moved.count(), 0);
    auto renamed = three;
    renamed[1].label = "Gamma";
    apply_combo_style(&box, combo_style(), renamed, "b");
    EXPECT_GT(rebuilt.count(), 0);
    EXPECT_EQ(box.combo->currentText().toStdString(), "Gamma");
}

TEST(Combo, OnlyTheUserSChoiceIsReported) {
    ComboWidget box;
    std::vector<std::string> chosen;
    box.on_select = [&](const std::string& value) { chosen.push_back(value); };
    apply_combo_style(&box, combo_style(), three, "a");
    box.show_value("B");
    EXPECT_TRUE(chosen.empty());
    box.show();
    QTest::keyClick(box.combo, Qt::Key_Up);
    EXPECT_EQ(chosen, std::vector<std::string>{"b"});
}

TEST(Combo, APressOnTheBoxOpensTheList) {
    ComboWidget box;
    apply_combo_style(&box, combo_style(), three, "a");
    box.resize(200, 48);
    box.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&box));
    QTest::mousePress(&box, Qt::LeftButton, {}, {190, 24});
    EXPECT_TRUE(box.combo->view()->isVisible());
    EXPECT_GE(box.combo->view()->width(), 190) << "as wide as the box";
    box.combo->hidePopup();
}

TEST(Combo, TheControlLeavesRoomForTheChevron) {
    ComboWidget box;
    apply_combo_style(&box, combo_style(), three, "a");
    box.resize(200, 48);
    QResizeEvent resized(box.size(), {});
    QCoreApplication::sendEvent(&box, &resized);
    EXPECT_EQ(box.combo->geometry(), QRect(11, 5, 200 - 22 - 24, 38));
    const QImage image = picture_of(box);
    const QColor ground(QStringLiteral("#202020"));
    // Two arms of half size 4.4 around (177, 24): the tip is below the middle, the ends above it.
    EXPECT_NE(image.pixelColor(177, 26), ground);
    EXPECT_EQ(image.pixelColor(177, 21), ground);
    EXPECT_NE(image.pixelColor(173, 22), ground);
    EXPECT_NE(image.pixelColor(181, 22), ground);
    EXPECT_EQ(box.sizeHint(), box.combo->sizeHint() + QSize(22, 10));
    EXPECT_EQ(box.minimumSizeHint(), QSize(0, box.sizeHint().height()));
}

TEST(Combo, TheWheelScrollsThePanelAndSelectsNothing) {
    QScrollArea area;
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    auto* box = new ComboWidget;
    apply_combo_style(box, combo_style(), three, "a");
    column->addWidget(box);
    content->setMinimumHeight(1000);
    area.setWidget(content);
    area.resize(300, 200);
    area.show();
    area.setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&area));
    turn_wheel_over(*box->combo);
    EXPECT_EQ(box->combo->currentText().toStdString(), "Alpha");
    EXPECT_GT(area.verticalScrollBar()->value(), 0);
    EXPECT_FALSE(box->combo->hasFocus());
}
