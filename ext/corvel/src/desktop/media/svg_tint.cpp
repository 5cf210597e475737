#include "desktop/media/svg_tint.h"

#include <QRegularExpression>
#include <QStringView>

#include <algorithm>
#include <array>
#include <functional>
#include <set>

namespace Corvel {

namespace {

QString to_qstring(std::string_view text) {
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

// Each pattern is compiled once. Subjects come from UTF-8, so they need no check, which would read
// the whole document again for every search.
constexpr auto NO_CHECK = QRegularExpression::DontCheckSubjectStringMatchOption;

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

const QRegularExpression& stop_in_style() {
    static const QRegularExpression pattern(QStringLiteral(R"re((stop-color\s*:\s*)([^;"']+))re"));
    return pattern;
}

const QRegularExpression& stop_attribute() {
    static const QRegularExpression pattern(
        QStringLiteral(R"re((stop-color\s*=\s*")([^"]*)("))re"));
    return pattern;
}

using Names = std::set<std::string, std::less<>>;

Names excluded_ids(std::string_view text) {
    Names ids;
    if (text.find("exclude") == std::string_view::npos)
        return ids;
    const QString subject = to_qstring(text);
    for (auto matches =
             exclude_comment().globalMatch(subject, 0, QRegularExpression::NormalMatch, NO_CHECK);
         matches.hasNext();)
        for (const QString& id :
             matches.next().captured(1).split(QLatin1Char(' '), Qt::SkipEmptyParts))
            ids.insert(id.toStdString());
    return ids;
}

bool is_word_char(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

// Shape tags and their attributes are looked for in every frame of an animated image, so these
// three scan the bytes by hand.

/// <(path|circle|rect|ellipse)\b[^>]*> from `from` on; empty without a match.
std::string_view next_shape_tag(std::string_view text, std::size_t from) {
    constexpr std::array<std::string_view, 4> shapes = {"path", "circle", "rect", "ellipse"};
    for (std::size_t at = text.find('<', from); at != text.npos; at = text.find('<', at + 1)) {
        const std::string_view name = text.substr(at + 1);
        for (const std::string_view shape : shapes) {
            if (!name.starts_with(shape) ||
                (name.size() > shape.size() && is_word_char(name[shape.size()])))
                continue;
            const std::size_t end = name.find('>', shape.size());
            return end == name.npos ? std::string_view() : text.substr(at, end + 2);
        }
    }
    return {};
}

/// An attribute as it stands in a tag.
struct FoundAttribute {
    std::size_t start = std::string_view::npos; ///< of its name; npos if there is none
    std::size_t end = 0;                        ///< past the closing quote
    std::string_view value;
};

/// name\s*=\s*"([^"]*)"; like the pattern, it also finds the name at the end of a longer one.
FoundAttribute find_attribute(std::string_view tag, std::string_view name) {
    constexpr std::string_view blanks = " \t\n\v\f\r";
    for (std::size_t start = tag.find(name); start != tag.npos; start = tag.find(name, start + 1)) {
        std::size_t at = tag.find_first_not_of(blanks, start + name.size());
        if (at == tag.npos || tag[at] != '=')
            continue;
        at = tag.find_first_not_of(blanks, at + 1);
        if (at == tag.npos || tag[at] != '"')
            continue;
        const std::size_t close = tag.find('"', at + 1);
        if (close != tag.npos)
            return {start, close + 1, tag.substr(at + 1, close - at - 1)};
    }
    return {};
}

/// Writes the shape tag to `out` as it is to be, or notes the gradient that fills it.
void append_shape(std::string& out, std::string_view tag, const Names& excluded,
                  QSet<QString>& gradients, const std::string& tint) {
    const std::string_view id = find_attribute(tag, "id").value;
    if (id.empty() || excluded.contains(id)) {
        out += tag;
        return;
    }
    if (tag.find("url(") != tag.npos) {
        const auto reference = gradient_reference().match(
            to_qstring(tag), 0, QRegularExpression::NormalMatch, NO_CHECK);
        if (reference.hasMatch()) {
            gradients.insert(reference.captured(1));
            out += tag;
            return;
        }
    }
    const FoundAttribute fill = find_attribute(tag, "fill");
    if (fill.start == tag.npos || fill.value == "none") {
        out += tag;
        return;
    }
    out += tag.substr(0, fill.start);
    out.append("fill=\"").append(tint).append("\"");
    out += tag.substr(fill.end);
}

QString tinted_stops(QString element, const QString& tint) {
    const auto replace = [&](const QRegularExpression& pattern) {
        QString out;
        qsizetype copied = 0;
        for (auto matches =
                 pattern.globalMatch(element, 0, QRegularExpression::NormalMatch, NO_CHECK);
             matches.hasNext();) {
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

/// Steps through the matches of `gradient_element`. Where one start tag fails, all that begin in
/// it fail: an id and an end tag that would serve them would have served the first.
class GradientWalk {
public:
    explicit GradientWalk(const QString& text) {
        constexpr qsizetype end_tag_length = 17; // "</linearGradient>"
        last_end_tag_ = std::max(text.lastIndexOf(QLatin1String("</linearGradient>")),
                                 text.lastIndexOf(QLatin1String("</radialGradient>")));
        subject_ = QStringView(text).first(last_end_tag_ < 0 ? 0 : last_end_tag_ + end_tag_length);
    }

    /// The next match; one without a match at the end.
    QRegularExpressionMatch next() {
        for (qsizetype at = next_start(); at >= 0; at = next_start()) {
            const qsizetype tag_end = subject_.indexOf(QLatin1Char('>'), at);
            if (tag_end > last_end_tag_)
                return {}; // only an end tag's own ">" is left
            const auto options = NO_CHECK | QRegularExpression::AnchorAtOffsetMatchOption;
            auto match =
                gradient_element().match(subject_, at, QRegularExpression::NormalMatch, options);
            at_ = match.hasMatch() ? match.capturedEnd() : tag_end + 1;
            if (match.hasMatch())
                return match;
        }
        return {};
    }

private:
    qsizetype next_start() const {
        const auto match =
            gradient_start().match(subject_, at_, QRegularExpression::NormalMatch, NO_CHECK);
        return match.hasMatch() ? match.capturedStart() : -1;
    }

    QStringView subject_;
    qsizetype last_end_tag_ = -1;
    qsizetype at_ = 0;
};

} // namespace

QString recolor_gradients(const QString& text, const QSet<QString>& names, const QString& tint) {
    if (!text.isValidUtf16())
        return text;
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

QByteArray recolor_svg(std::string_view text, const std::string& tint) {
    if (tint.empty())
        return QByteArray(text.data(), qsizetype(text.size()));
    const Names excluded = excluded_ids(text);
    QSet<QString> gradients;
    std::string out;
    out.reserve(text.size() + 64);
    std::size_t copied = 0;
    for (std::string_view tag = next_shape_tag(text, 0); !tag.empty();
         tag = next_shape_tag(text, copied)) {
        const std::size_t start = std::size_t(tag.data() - text.data());
        out += text.substr(copied, start - copied);
        append_shape(out, tag, excluded, gradients, tint);
        copied = start + tag.size();
    }
    out += text.substr(copied);
    if (gradients.isEmpty())
        return QByteArray::fromStdString(out);
    return recolor_gradients(to_qstring(out), gradients, to_qstring(tint)).toUtf8();
}

} // namespace Corvel
