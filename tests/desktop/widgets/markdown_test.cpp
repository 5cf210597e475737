#include "desktop/widgets/markdown_widget.h"
#include "desktop/widgets/widget_support.h"

#include <gtest/gtest.h>

#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QVBoxLayout>

#include <memory>

using namespace Corvel;

namespace {

/// The format of the first place where `text` stands in the document.
QTextCharFormat format_of(const MarkdownWidget& markdown, const char* text) {
    QTextCursor found = markdown.document()->find(QLatin1String(text));
    return found.charFormat();
}

NodeStyle style_with(double size = 0) {
    NodeStyle style;
    style.text_color = "#102030";
    style.secondary_text_color = "#405060";
    style.font_size = size;
    return style;
}

} // namespace

TEST(Markdown, CodeAndLinksHaveTheStyleSColours) {
    MarkdownWidget markdown;
    apply_markdown_style(&markdown, style_with());
    markdown.set_source_text("# Head\n\nplain `code` and [link](https://example.org) and "
                             "<https://auto.example>\n\n```\nfence\n```\n");
    EXPECT_EQ(format_of(markdown, "code").background().color(), QColor("#405060"));
    EXPECT_EQ(format_of(markdown, "link").foreground().color(), QColor("#102030"));
    EXPECT_TRUE(format_of(markdown, "link").fontUnderline());
    EXPECT_EQ(format_of(markdown, "auto").foreground().color(), QColor("#102030"));
    const QTextBlock fence = markdown.document()->find(QLatin1String("fence")).block();
    EXPECT_TRUE(fence.blockFormat().background().color() == QColor("#405060") ||
                format_of(markdown, "fence").background().color() == QColor("#405060"));

    apply_markdown_style(&markdown, NodeStyle());
    EXPECT_EQ(markdown.text_color.toStdString(), "#e3e3e3");
    EXPECT_EQ(markdown.code_color.toStdString(), "#2f3136");
    EXPECT_EQ(format_of(markdown, "code").background().color(), QColor("#2f3136"));
}

TEST(Markdown, TheFontSizeReachesTheTextAndScalesHeadings) {
    MarkdownWidget markdown;
    markdown.resize(400, 10);
    markdown.set_source_text("# Head\n\nplain");
    apply_markdown_style(&markdown, style_with(30.7));
    EXPECT_EQ(format_of(markdown, "plain").font().pixelSize(), 30);
    const int tall = markdown.height();
    apply_markdown_style(&markdown, style_with());
    EXPECT_EQ(format_of(markdown, "plain").font().pixelSize(), 15);
    EXPECT_LT(markdown.height(), tall);
}

TEST(Markdown, IsAsHighAsItsTextAtEveryWidth) {
    QWidget window;
    auto* column = new QVBoxLayout(&window);
    auto* markdown = new MarkdownWidget;
    column->addWidget(markdown);
    column->addStretch();
    apply_markdown_style(markdown, style_with());
    std::string text;
    for (int i = 0; i < 60; ++i)
        text += "several words in a row ";
    markdown->set_source_text(text);
    window.resize(600, 900);
    window.show();
    int last = 0;
    for (const int width : {600, 400, 250}) {
        window.resize(width, 900);
        QTest::qWait(1);
        EXPECT_EQ(markdown->height(), int(std::ceil(markdown->document()->size().height())));
        EXPECT_GT(markdown->height(), last);
        EXPECT_EQ(markdown->verticalScrollBar()->maximum(), 0);
        last = markdown->height();
    }
    markdown->set_source_text("short");
    EXPECT_LT(markdown->height(), last / 4);
}

TEST(Markdown, TheWheelScrollsWhatSurroundsIt) {
    QScrollArea area;
    auto* markdown = new MarkdownWidget;
    std::string text;
    for (int i = 0; i < 100; ++i)
        text += "line\n\n";
    markdown->set_source_text(text);
    area.setWidget(markdown);
    area.setWidgetResizable(true);
    area.resize(200, 200);
    area.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&area));
    turn_wheel_over(*markdown->viewport());
    EXPECT_GT(area.verticalScrollBar()->value(), 0);
}

TEST(Markdown, ALinkToAFileLeavesTheTextAlone) {
    MarkdownWidget markdown;
    markdown.set_source_text("read [this](/etc/hostname) or [that](other.md)");
    const QString before = markdown.toPlainText();
    for (const char* target : {"/etc/hostname", "other.md", "#part"}) {
        markdown.setSource(QUrl(QLatin1String(target)));
        EXPECT_EQ(markdown.toPlainText(), before);
    }
}
