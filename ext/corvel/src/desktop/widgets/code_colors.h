#pragma once

#include <QColor>
#include <QString>
#include <QSyntaxHighlighter>

namespace Corvel {

/// Colours the JSON or Markdown of a text document, or the errors of a log, in tones of its text's
/// colour.
class CodeColors : public QSyntaxHighlighter {
public:
    explicit CodeColors(QTextDocument* document);

    /// `language` is "json", "markdown" or "log", anything else leaves the text plain; `ink` is the
    /// colour of the text. An unchanged look costs nothing.
    void set_look(const QString& language, const QColor& ink);

protected:
    void highlightBlock(const QString& line) override;

private:
    enum class Tone { Name, Literal, Value, Error, Faint, Strong };
    void paint(qsizetype from, qsizetype to, Tone tone);
    void color_json(const QString& line);
    void color_markdown(const QString& line);
    void color_log(const QString& line);
    /// Colours what stands between two marks such as "`", and tells where it ends.
    qsizetype color_span(const QString& line, qsizetype from, const QString& mark, Tone tone);

    QString language_;
    QColor ink_;
};

} // namespace Corvel
