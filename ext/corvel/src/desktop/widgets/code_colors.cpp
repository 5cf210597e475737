#include "desktop/widgets/code_colors.h"

#include <QTextCharFormat>

#include <algorithm>

namespace Corvel {

namespace {

/// Longer lines stay plain: no person reads them, and each edit would colour all of one anew.
constexpr qsizetype LONGEST_LINE = 5000;
/// State of a line that ends within a fenced block of Markdown.
constexpr int IN_FENCE = 1;
/// Share of a tone in the colour of a word; the rest is the text's own, which makes the tone light
/// on dark themes and dark on light ones.
constexpr double TONE_SHARE = 0.5;
constexpr float FAINT = 0.65F;

QColor toned(const QColor& tone, const QColor& ink) {
    const auto part = [](int a, int b) { return qRound(a * TONE_SHARE + b * (1 - TONE_SHARE)); };
    return {part(tone.red(), ink.red()), part(tone.green(), ink.green()),
            part(tone.blue(), ink.blue())};
}

bool is_word(QChar letter) {
    return letter.isLetterOrNumber() || letter == QLatin1Char('-') || letter == QLatin1Char('+') ||
           letter == QLatin1Char('.');
}

/// Behind the closing quote of the string that begins at `from`, or the line's end.
qsizetype end_of_string(const QString& line, qsizetype from) {
    for (qsizetype at = from + 1; at < line.size(); ++at) {
        if (line[at] == QLatin1Char('\\'))
            ++at;
        else if (line[at] == QLatin1Char('"'))
            return at + 1;
    }
    return line.size();
}

qsizetype skip_blanks(const QString& line, qsizetype from) {
    while (from < line.size() && line[from].isSpace())
        ++from;
    return from;
}

} // namespace

CodeColors::CodeColors(QTextDocument* document)
    : QSyntaxHighlighter(document) {}

void CodeColors::set_look(const QString& language, const QColor& ink) {
    if (language == language_ && ink == ink_)
        return;
    language_ = language;
    ink_ = ink;
    rehighlight();
}

void CodeColors::paint(qsizetype from, qsizetype to, Tone tone) {
    QTextCharFormat format;
    QColor color = ink_;
    switch (tone) {
    case Tone::Name:
        color = toned(QColor(64, 140, 220), ink_);
        break;
    case Tone::Literal:
        color = toned(QColor(214, 122, 40), ink_);
        break;
    case Tone::Value:
        color = toned(QColor(52, 160, 110), ink_);
        break;
    case Tone::Error:
        color = toned(QColor(240, 80, 80), ink_);
        format.setFontWeight(QFont::Bold);
        break;
    case Tone::Faint:
        color.setAlphaF(FAINT);
        break;
    case Tone::Strong:
        format.setFontWeight(QFont::Bold);
        break;
    }
    format.setForeground(color);
    setFormat(int(from), int(to - from), format);
}

void CodeColors::highlightBlock(const QString& line) {
    if (line.size() > LONGEST_LINE)
        return;
    if (language_ == QLatin1String("json"))
        color_json(line);
    else if (language_ == QLatin1String("markdown"))
        color_markdown(line);
    else if (language_ == QLatin1String("log"))
        color_log(line);
}

void CodeColors::color_json(const QString& line) {
    for (qsizetype at = 0; at < line.size();) {
        qsizetype end = at + 1;
        if (line[at] == QLatin1Char('"')) {
            end = end_of_string(line, at);
            const qsizetype next = skip_blanks(line, end);
            const bool name = next < line.size() && line[next] == QLatin1Char(':');
            paint(at, end, name ? Tone::Name : Tone::Value);
        } else if (is_word(line[at])) {
            while (end < line.size() && is_word(line[end]))
                ++end;
            paint(at, end, Tone::Literal);
        } else if (!line[at].isSpace()) {
            paint(at, end, Tone::Faint);
        }
        at = end;
    }
}

void CodeColors::color_log(const QString& line) {
    if (line.contains(QLatin1String("error"), Qt::CaseInsensitive) ||
        line == QLatin1String("=== Build Failed ==="))
        paint(0, line.size(), Tone::Error);
}

qsizetype CodeColors::color_span(const QString& line, qsizetype from, const QString& mark,
                                 Tone tone) {
    const qsizetype close = line.indexOf(mark, from + mark.size());
    if (close < 0)
        return from + mark.size();
    paint(from, close + mark.size(), tone);
    return close + mark.size();
}

void CodeColors::color_markdown(const QString& line) {
    const qsizetype start = skip_blanks(line, 0);
    const bool fence = line.mid(start).startsWith(QLatin1String("```"));
    const bool inside = previousBlockState() == IN_FENCE;
    setCurrentBlockState(fence != inside ? IN_FENCE : 0);
    if (fence)
        return paint(start, line.size(), Tone::Faint);
    if (inside)
        return paint(0, line.size(), Tone::Value);
    if (start < line.size() && line[start] == QLatin1Char('#')) {
        paint(start, line.size(), Tone::Name);
        return;
    }
    if (start < line.size() && QStringLiteral(">-*+|").contains(line[start]))
        paint(start, start + 1, Tone::Literal);
    for (qsizetype at = start; at < line.size();) {
        if (line[at] == QLatin1Char('`'))
            at = color_span(line, at, QStringLiteral("`"), Tone::Value);
        else if (QStringView(line).mid(at).startsWith(QLatin1String("**")))
            at = color_span(line, at, QStringLiteral("**"), Tone::Strong);
        else if (QStringView(line).mid(at).startsWith(QLatin1String("](")))
            at = std::max(color_span(line, at, QStringLiteral(")"), Tone::Name), at + 1);
        else
            ++at;
    }
}

} // namespace Corvel
