#include "desktop/widgets/markdown_widget.h"

#include "desktop/widgets/sizing.h"

#include <QAbstractTextDocumentLayout>
#include <QPalette>
#include <QTextDocument>
#include <QWheelEvent>

#include <cmath>

namespace Corvel {

MarkdownWidget::MarkdownWidget(QWidget* parent)
    : QTextBrowser(parent) {
    setFrameStyle(0);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setLineWrapMode(QTextEdit::WidgetWidth);
    setOpenExternalLinks(true);
    setStyleSheet(QStringLiteral("QTextBrowser { background: transparent; border: 0; }"));
    viewport()->setAutoFillBackground(false);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(document()->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, this,
            [this] { fit_height(); });
}

MarkdownWidget::~MarkdownWidget() = default;

void MarkdownWidget::set_source_text(const std::string& markdown) {
    const QString wanted = QString::fromStdString(markdown);
    if (wanted == text)
        return;
    text = wanted;
    render();
}

void MarkdownWidget::render() {
    QTextDocument parsed;
    // The HTML names the font of the document that wrote it.
    parsed.setDefaultFont(document()->defaultFont());
    parsed.setMarkdown(text, QTextDocument::MarkdownDialectGitHub);
    QString html = parsed.toHtml();
    // These two literals are how code spans and links are written.
    html.replace(QLatin1String("font-family:'monospace';"),
                 QLatin1String("font-family:'monospace'; background-color:") + code_color +
                     QLatin1Char(';'));
    html.replace(QLatin1String("color:#0000ff;"),
                 QLatin1String("color:") + text_color + QLatin1Char(';'));
    document()->setDefaultStyleSheet(QLatin1String("pre { background-color:") + code_color +
                                     QLatin1String("; }a { color:") + text_color +
                                     QLatin1String("; text-decoration: underline; }"));
    setHtml(html);
    fit_height();
}

void MarkdownWidget::fit_height() {
    document()->setTextWidth(viewport()->width());
    const int wanted = whole_pixels(std::ceil(document()->size().height()));
    if (wanted >= 1 && wanted != height())
        setFixedHeight(wanted);
}

void MarkdownWidget::resizeEvent(QResizeEvent* event) {
    QTextBrowser::resizeEvent(event);
    fit_height();
}

void MarkdownWidget::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

void MarkdownWidget::doSetSource(const QUrl&, QTextDocument::ResourceType) {
    // A link to a file would replace the text by that file.
}

void apply_markdown_style(MarkdownWidget* markdown, const NodeStyle& style) {
    const QString text_color = style.text_color.empty() ? QStringLiteral("#e3e3e3")
                                                        : QString::fromStdString(style.text_color);
    const QString code_color = style.secondary_text_color.empty()
                                   ? QStringLiteral("#2f3136")
                                   : QString::fromStdString(style.secondary_text_color);
    QFont font = markdown->font();
    const int pixels = whole_pixels(style.font_size);
    font.setPixelSize(pixels > 0 ? pixels : 15);
    if (markdown->text_color == text_color && markdown->code_color == code_color &&
        markdown->document()->defaultFont() == font)
        return;
    markdown->text_color = text_color;
    markdown->code_color = code_color;
    const QColor color = QColor::fromString(text_color);
    QPalette palette = markdown->palette();
    palette.setColor(QPalette::Text, color);
    palette.setColor(QPalette::Link, color);
    palette.setColor(QPalette::LinkVisited, color);
    palette.setColor(QPalette::Base, Qt::transparent);
    markdown->setPalette(palette);
    markdown->document()->setDefaultFont(font);
    markdown->render();
}

} // namespace Corvel
