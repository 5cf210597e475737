#pragma once

#include "layers/node_style.h"

#include <QString>
#include <QTextBrowser>

#include <string>

namespace Corvel {

/// Markdown (GitHub's dialect) as formatted text, as high as its text: it never scrolls. Links
/// lead out of the application; links to files do nothing.
class MarkdownWidget : public QTextBrowser {
    Q_OBJECT
public:
    explicit MarkdownWidget(QWidget* parent = nullptr);
    ~MarkdownWidget() override;

    /// Shows another source; nothing happens if it is the present one.
    void set_source_text(const std::string& markdown);
    /// Renders `text` anew, in the present colours and font.
    void render();
    /// Makes the widget as high as its text at the present width.
    void fit_height();

    QString text; ///< Markdown source
    QString text_color;
    QString code_color; ///< behind code

protected:
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void doSetSource(const QUrl& name, QTextDocument::ResourceType type) override;
};

/// Gives the widget the style's colours and font size and renders it anew if they changed.
void apply_markdown_style(MarkdownWidget* markdown, const NodeStyle& style);

} // namespace Corvel
