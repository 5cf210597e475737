#include "desktop/media/svg_tint.h"

#include <QRegularExpression>
#include <QStringView>

#include <algorithm>
#include <array>

namespace Corvel {

namespace {

// Each pattern is compiled once. The searches below are fed only text in which a match can end:
// a pattern that must run to the end of a large document at every start would take quadratic time.

const QRegularExpression& exclude_comment() {
    static const QRegularExpression pattern(
        QStringLiteral(R"re(<!--\s*exclude\s*=\s*"([^"]+)"\s*-->)re"));
    return pattern;
}

/// Same as fill\s*[:=]\s*"?\s*url\(\s*#([^)\s]+), but a run of blanks is divided in one way only.
const QRegularExpression& gradient_reference() {
    static const QRegularExpression pattern(
        QStringLiteral(R"re(fill\s*+[:=]\s*+(?:"\s*+)?url\(\s*+#([^)\s]+))re"));
    return pattern;
}

const QRegularExpression& gradient_element() {
    static const QRegularExpression pattern(
        QStringLiteral(R"re(<(?:linear|radial)Gradient\b[^>]*\bid\s*=\s*"([^"]*)"[^>]*>)re"
                       R"re(.*?</(?:linear|radial)Gradient>)re"),
        QRegularExpression::DotMatchesEverythingOption);
    return pattern;
}

const QRegularExpression& gradient_start() {
    static const QRegularExpression pattern(QStringLiteral(R"re(<(?:linear|radial)Gradient\b)re"));
    return pattern;
}

/// The part of `gradient_element` without which no start tag can match.
const QRegularExpression& gradient_id() {
    static const QRegularExpression pattern(QStringLiteral(R"re(\bid\s*=\s*"[^"]*"[^>]*>)re"));
    return pattern;
}

const QRegularExpression& stop_in_style() {
    static const QRegularExpression pattern(QStringLiteral(R"re((stop-color\s*:\s*)([^;"']+))re"));
    return pattern;
}

const QRegularExpression& stop_attribute() {
    static const QRegularExpression pattern(
        QStringLiteral(R"re((stop-color\s*=\s*")([^"]*)("))re"));
    return pattern;
}

QSet<QString> excluded_ids(const QString& text) {
    QSet<QString> ids;
    if (!text.contains(QLatin1String("exclude")))
        return ids;
    for (auto matches = exclude_comment().globalMatch(text); matches.hasNext();)
        for (const QString& id :
             matches.next().captured(1).split(QLatin1Char(' '), Qt::SkipEmptyParts))
            ids.insert(id);
    return ids;
}

bool is_word_char(QChar c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') ||
           c == u'_';
}

bool is_blank(QChar c) {
    return c == u' ' || (c >= u'\t' && c <= u'\r');
}

// Shape tags and their attributes are looked for in every frame of an animated image, so these
// three scan by hand.

/// <(path|circle|rect|ellipse)\b[^>]*> from `from` on; null without a match.
QStringView next_shape_tag(QStringView text, qsizetype from) {
    constexpr std::array<QStringView, 4> shapes = {u"path", u"circle", u"rect", u"ellipse"};
    for (qsizetype at = text.indexOf(u'<', from); at >= 0; at = text.indexOf(u'<', at + 1)) {
        const QStringView name = text.sliced(at + 1);
        for (const QStringView shape : shapes) {
            if (!name.startsWith(shape) ||
                (name.size() > shape.size() && is_word_char(name[shape.size()])))
                continue;
            const qsizetype end = name.indexOf(u'>', shape.size());
            return end < 0 ? QStringView() : text.sliced(at, end + 2);
        }
    }
    return {};
}

/// An attribute as it stands in a tag.
struct FoundAttribute {
    qsizetype start = -1; ///< of its name; -1 if there is none
    qsizetype end = 0;    ///< past the closing quote
    QStringView value;
};

/// name\s*=\s*"([^"]*)"; like the pattern, it also finds the name at the end of a longer one.
FoundAttribute find_attribute(QStringView tag, QStringView name) {
    const auto skip_blanks = [tag](qsizetype at) {
        while (at < tag.size() && is_blank(tag[at]))
            ++at;
        return at;
    };
    for (qsizetype start = tag.indexOf(name); start >= 0; start = tag.indexOf(name, start + 1)) {
        qsizetype at = skip_blanks(start + name.size());
        if (at == tag.size() || tag[at] != u'=')
            continue;
        at = skip_blanks(at + 1);
        if (at == tag.size() || tag[at] != u'"')
            continue;
        const qsizetype close = tag.indexOf(u'"', at + 1);
        if (close >= 0)
            return {start, close + 1, tag.sliced(at + 1, close - at - 1)};
    }
    return {};
}

/// Writes the shape tag to `out` as it is to be, or notes the gradient that fills it.
void append_shape(QString& out, QStringView tag, const QSet<QString>& excluded,
                  QSet<QString>& gradients, const QString& tint) {
    const QStringView name = find_attribute(tag, u"id").value;
    if (name.isEmpty() || (!excluded.isEmpty() && excluded.contains(name.toString()))) {
        out += tag;
        return;
    }
    if (tag.contains(QLatin1String("url("))) {
        const auto reference = gradient_reference().match(tag);
        if (reference.hasMatch()) {
            gradients.insert(reference.captured(1));
            out += tag;
            return;
        }
    }
    const FoundAttribute fill = find_attribute(tag, u"fill");
    if (fill.start < 0 || fill.value == QLatin1String("none")) {
        out += tag;
        return;
    }
    out += tag.first(fill.start);
    out += QLatin1String("fill=\"") + tint + QLatin1Char('"');
    out += tag.sliced(fill.end);
}

QString tinted_stops(QString element, const QString& tint) {
    const auto replace = [&](const QRegularExpression& pattern) {
        QString out;
        qsizetype copied = 0;
        for (auto matches = pattern.globalMatch(element); matches.hasNext();) {
            const auto match = matches.next();
            out += QStringView(element).sliced(copied, match.capturedEnd(1) - copied);
            out += tint;
            copied = match.capturedEnd(2);
        }
        if (copied == 0)
            return;
        out += QStringView(element).sliced(copied);
        element = out;
    };
    replace(stop_in_style());
    replace(stop_attribute());
    return element;
}

/// Steps through the matches of `gradient_element`. A start tag is tried only if an id stands
/// before its end, and only as far as the last end tag reaches.
class GradientWalk {
public:
    explicit GradientWalk(const QString& text) {
        constexpr qsizetype end_tag_length = 17; // "</linearGradient>"
        const qsizetype last = std::max(text.lastIndexOf(QLatin1String("</linearGradient>")),
                                        text.lastIndexOf(QLatin1String("</radialGradient>")));
        subject_ = QStringView(text).first(last < 0 ? 0 : last + end_tag_length);
    }

    /// The next match; one without a match at the end.
    QRegularExpressionMatch next() {
        for (qsizetype at = next_start(); at >= 0; at = next_start()) {
            const qsizetype tag_end = subject_.indexOf(QLatin1Char('>'), at);
            if (next_id(at) >= tag_end) {
                at_ = tag_end + 1;
                continue;
            }
            auto match = gradient_element().match(subject_, at, QRegularExpression::NormalMatch,
                                                  QRegularExpression::AnchorAtOffsetMatchOption);
            if (match.hasMatch()) {
                at_ = match.capturedEnd();
                return match;
            }
            at_ = at + 1;
        }
        return {};
    }

private:
    qsizetype next_start() const {
        const auto match = gradient_start().match(subject_, at_);
        return match.hasMatch() ? match.capturedStart() : -1;
    }

    qsizetype next_id(qsizetype from) {
        if (id_at_ < from) {
            const auto match = gradient_id().match(subject_, from);
            id_at_ = match.hasMatch() ? match.capturedStart() : subject_.size();
        }
        return id_at_;
    }

    QStringView subject_;
    qsizetype at_ = 0;
    qsizetype id_at_ = -1;
};

} // namespace

QString recolor_gradients(const QString& text, const QSet<QString>& names, const QString& tint) {
    QString out;
    qsizetype copied = 0;
    GradientWalk walk(text);
    for (auto match = walk.next(); match.hasMatch(); match = walk.next()) {
        if (!names.contains(match.captured(1)))
            continue;
        out += QStringView(text).sliced(copied, match.capturedStart() - copied);
        out += tinted_stops(match.captured(), tint);
        copied = match.capturedEnd();
    }
    if (copied == 0)
        return text;
    out += QStringView(text).sliced(copied);
    return out;
}

QByteArray recolor_svg(const QString& text, const std::string& tint) {
    if (tint.empty())
        return text.toUtf8();
    const QString color = QString::fromStdString(tint);
    const QSet<QString> excluded = excluded_ids(text);
    QSet<QString> gradients;
    QString out;
    out.reserve(text.size() + 64);
    qsizetype copied = 0;
    const QStringView source = text;
    for (QStringView tag = next_shape_tag(source, 0); !tag.isNull();
         tag = next_shape_tag(source, copied)) {
        const qsizetype start = tag.data() - source.data();
        out += source.sliced(copied, start - copied);
        append_shape(out, tag, excluded, gradients, color);
        copied = start + tag.size();
    }
    out += source.sliced(copied);
    if (!gradients.isEmpty())
        out = recolor_gradients(out, gradients, color);
    return out.toUtf8();
}

} // namespace Corvel
