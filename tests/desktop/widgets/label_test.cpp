#include "desktop/widgets/widget_support.h"
#include "desktop/widgets/wrap_label.h"

#include <gtest/gtest.h>

#include <QFontInfo>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include <memory>

using namespace Corvel;

namespace {

std::unique_ptr<WrapLabel> label_of(const std::string& text,
                                    const std::function<void(NodeStyle&)>& fill_in) {
    RenderNode node;
    node.text = text;
    node.style = styled(fill_in);
    return std::unique_ptr<WrapLabel>(make_label(node, 28));
}

} // namespace

TEST(Label, FontAndColourComeFromTheStyle) {
    const auto plain = label_of("x", [](NodeStyle&) {});
    EXPECT_EQ(plain->font().pixelSize(), 28);
    EXPECT_EQ(plain->font().weight(), 400);
    EXPECT_EQ(plain->styleSheet().toStdString(), "background: transparent;");
    const auto set = label_of("x", [](NodeStyle& s) {
        s.font_size = 13.9;
        s.font_weight = 650;
        s.font_family = "monospace";
        s.text_color = "#102030";
    });
    EXPECT_EQ(set->font().pixelSize(), 13);
    EXPECT_EQ(set->font().weight(), 650);
    EXPECT_TRUE(QFontInfo(set->font()).fixedPitch());
    EXPECT_EQ(set->styleSheet().toStdString(), "background: transparent; color: #ff102030;");
    set->set_opacity(0.5);
    EXPECT_EQ(set->styleSheet().toStdString(), "background: transparent; color: #80102030;");
    set->set_opacity(-2);
    EXPECT_EQ(set->styleSheet().toStdString(), "background: transparent; color: #00102030;");
    set->set_color("no colour");
    EXPECT_TRUE(set->styleSheet().contains(QStringLiteral("color: #00"))) << "the palette's";
    set->set_opacity(1);
    EXPECT_EQ(set->styleSheet().toStdString(), "background: transparent;");
}

TEST(Label, NamesAreNotMarkup) {
    const std::string text = "use <kbd>x</kbd> & <b>y";
    const auto label = label_of(text, [](NodeStyle&) {});
    EXPECT_EQ(label->text().toStdString(), text);
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
}

TEST(Label, AWrappingLabelFitsOnOneLineAtItsOwnHint) {
    for (const char* text : {"Title", "A longer line, with commas; and more", "WWWWiiii",
                             "Projektgrößenübersicht", "a", "AVAVAV To. Ty"}) {
        for (int px = 9; px < 35; ++px) {
            const auto label = label_of(text, [&](NodeStyle& s) { s.font_size = px; });
            label->setWordWrap(true);
            const QSize hint = label->sizeHint();
            EXPECT_EQ(label->heightForWidth(hint.width()), hint.height()) << text << " at " << px;
        }
    }
}

TEST(Label, ALongTextTakesTheWidthItIsGivenAndItsHeight) {
    QWidget window;
    auto* column = new QVBoxLayout(&window);
    column->setContentsMargins(0, 0, 0, 0);
    std::string text;
    for (int i = 0; i < 40; ++i)
        text += "several words ";
    auto* label = label_of(text, [](NodeStyle& s) { s.font_size = 14; }).release();
    label->setWordWrap(true);
    column->addWidget(label, 0, Qt::AlignHCenter);
    column->addStretch();
    window.resize(300, 600);
    window.show();
    EXPECT_EQ(label->width(), 300);
    EXPECT_EQ(label->height(), label->heightForWidth(300));
    EXPECT_GT(label->height(), 4 * QFontMetrics(label->font()).height());
}
