#include "desktop/media/svg_tint.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QRegularExpression>

#include <random>
#include <string>
#include <vector>

using namespace Corvel;

namespace {

std::string tinted(const std::string& text, const std::string& tint = "#ff0000") {
    return recolor_svg(QString::fromStdString(text), tint).toStdString();
}

struct Case {
    const char* what;
    std::string before;
    std::string after; ///< empty: unchanged
};

std::string repeated(const std::string& text, std::size_t bytes) {
    std::string out;
    out.reserve(bytes + text.size());
    while (out.size() < bytes)
        out += text;
    return out;
}

/// The matches of the gradient element's pattern as a plain search finds them.
QString recolored_by_plain_search(const QString& text, const QSet<QString>& names) {
    static const QRegularExpression element(
        QStringLiteral(R"x(<(?:linear|radial)Gradient\b[^>]*\bid\s*=\s*"([^"]*)"[^>]*>.*?)x"
                       R"x(</(?:linear|radial)Gradient>)x"),
        QRegularExpression::DotMatchesEverythingOption);
    QString out = text;
    qsizetype shift = 0;
    for (auto matches = element.globalMatch(text); matches.hasNext();) {
        const auto match = matches.next();
        if (!names.contains(match.captured(1)))
            continue;
        QString changed = match.captured();
        changed.replace(QRegularExpression(QStringLiteral(R"x((stop-color\s*:\s*)([^;"']+))x")),
                        QStringLiteral("\\1T"));
        changed.replace(QRegularExpression(QStringLiteral(R"x((stop-color\s*=\s*")([^"]*)("))x")),
                        QStringLiteral("\\1T\\3"));
        out.replace(match.capturedStart() + shift, match.capturedLength(), changed);
        shift += changed.size() - match.capturedLength();
    }
    return out;
}

const char* const gradient = R"x(<path id="a" fill="url(#g)"/>)x";

} // namespace

TEST(SvgTint, ShapesWithAnIdAndAFillTakeTheTint) {
    const std::vector<Case> cases = {
        {"no id", R"x(<path d="M0 0" fill="#000"/>)x", ""},
        {"id and fill", R"x(<path id="a" fill="#000"/>)x", R"x(<path id="a" fill="#ff0000"/>)x"},
        {"each shape",
         R"x(<circle id="a" fill="x"/><rect fill="y" id="b"/><ellipse id="c" fill=""/>)x",
         R"x(<circle id="a" fill="#ff0000"/><rect fill="#ff0000" id="b"/><ellipse id="c" fill="#ff0000"/>)x"},
        {"blanks in the attributes", "<path id = \"a\"\n fill\t=  \"#000\" d=\"\">",
         "<path id = \"a\"\n fill=\"#ff0000\" d=\"\">"},
        {"other shapes", R"x(<polygon id="a" fill="#000"/><line id="b" fill="#000"/>)x", ""},
        {"a tag that only begins like a shape", R"x(<rectangle id="a" fill="#000"/>)x", ""},
        {"fill none", R"x(<path id="a" fill="none"/>)x", ""},
        {"empty id", R"x(<path id="" fill="#000"/>)x", ""},
        {"an id at the end of another name counts", R"x(<path grid="a" fill="#000"/>)x",
         R"x(<path grid="a" fill="#ff0000"/>)x"},
        {"only the first fill", R"x(<path id="a" fill="#000" data-fill="#111"/>)x",
         R"x(<path id="a" fill="#ff0000" data-fill="#111"/>)x"},
        {"fill in single quotes", R"x(<path id="a" fill='#000'/>)x", ""},
        {"fill of the group", R"x(<g fill="#000"><path id="a"/></g>)x", ""},
        {"fill in a style", R"x(<path id="a" style="fill:#000"/>)x", ""},
        {"excluded, two blanks, comment behind the shapes",
         R"x(<path id="a" fill="#000"/><path id="b" fill="#000"/><path id="c" fill="#000"/>)x"
         R"x(<!-- exclude="a  b" -->)x",
         R"x(<path id="a" fill="#000"/><path id="b" fill="#000"/><path id="c" fill="#ff0000"/>)x"
         R"x(<!-- exclude="a  b" -->)x"},
        {"two exclude comments",
         R"x(<!--exclude = "a"--><!-- exclude="b"--><path id="a" fill="#000"/><path id="b" fill="x"/>)x",
         ""},
        {"unclosed tag", R"x(<path id="a" fill="#000")x", ""},
        {"not svg at all", "just <text> with \xC3\xA9 and > signs", ""},
        {"empty", "", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(tinted(c.before), c.after.empty() ? c.before : c.after);
        EXPECT_EQ(tinted(c.before, ""), c.before) << "without a tint";
    }
}

TEST(SvgTint, GradientsThatFillATintedShapeTakeOneColour) {
    const std::string stops =
        R"x(<stop stop-color="#000"/><stop style="stop-color:#fff; stop-opacity:.5"/></linearGradient>)x";
    const std::string painted =
        R"x(<stop stop-color="#ff0000"/><stop style="stop-color:#ff0000; stop-opacity:.5"/></linearGradient>)x";
    const std::vector<Case> cases = {
        {"used", gradient + (R"x(<linearGradient id="g">)x" + stops),
         gradient + (R"x(<linearGradient id="g">)x" + painted)},
        {"used, defined before, in a style",
         R"x(<linearGradient x1="0" id="g" y1="1">)x" + stops +
             R"x(<path id="a" style="fill: url( #g )"/>)x",
         R"x(<linearGradient x1="0" id="g" y1="1">)x" + painted +
             R"x(<path id="a" style="fill: url( #g )"/>)x"},
        {"unused", gradient + (R"x(<linearGradient id="h">)x" + stops), ""},
        {"used by a shape without id", R"x(<path fill="url(#g)"/><linearGradient id="g">)x" + stops,
         ""},
        {"used by an excluded shape",
         std::string(R"x(<!-- exclude="a" -->)x") + gradient + R"x(<linearGradient id="g">)x" +
             stops,
         ""},
        {"used by an excluded and by a tinted one",
         std::string(R"x(<!-- exclude="a" --><path id="b" fill="url(#g)"/>)x") + gradient +
             R"x(<linearGradient id="g">)x" + stops,
         std::string(R"x(<!-- exclude="a" --><path id="b" fill="url(#g)"/>)x") + gradient +
             R"x(<linearGradient id="g">)x" + painted},
        {"the second of three, the first unclosed",
         gradient + (R"x(<linearGradient id="f"/><radialGradient id="g"><stop stop-color='x'/>)x"
                     R"x(</radialGradient><linearGradient id="h">)x" +
                     stops),
         // The first element runs to the next end tag of either kind and so covers the second.
         ""},
        {"a gradient without an id before it",
         gradient + (R"x(<linearGradient></linearGradient><linearGradient id="g">)x" + stops),
         gradient + (R"x(<linearGradient></linearGradient><linearGradient id="g">)x" + painted)},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(tinted(c.before), c.after.empty() ? c.before : c.after);
    }
}

TEST(SvgTint, HostileDocumentsTakeNoTime) {
    const std::size_t size = 1 << 19;
    const std::string end = "</linearGradient>";
    const std::vector<std::string> documents = {
        repeated("<linearGradient ", size),
        repeated("<linearGradient ", size) + ">" + end,
        repeated("<linearGradient ", size) + " id >" + end,
        repeated("<linearGradient id ", size) + ">" + end,
        repeated("<linearGradient id=\"", size) + ">" + end,
        repeated("<linearGradient id=\"x\"/>", size),
        end + repeated("<linearGradient id=\"x\"/>", size),
        repeated("<linearGradientX", size) + " id=\"g\">" + end,
        repeated("<path id=\"a\" fill=\"#000\"", size),
        repeated("<path id=\"a\" fill=\"#000\"/>", size),
        "<path id=\"a\" url( fill=" + repeated(" ", size) + ">",
        "<path id=\"a\" " + repeated("url( fill=", size) + ">",
        "<path id" + repeated(" ", size) + ">",
        repeated("<!-- exclude=\"", size),
        "<!--" + repeated(" ", size) + "exclude" + repeated(" ", size),
        repeated("<!-- ", size) + "exclude",
        repeated("<path id=\"\" ", size) + ">",
    };
    for (const std::string& document : documents) {
        SCOPED_TRACE(document.substr(0, 40));
        QElapsedTimer timer;
        timer.start();
        tinted(gradient + document);
        EXPECT_LT(timer.elapsed(), 1000);
    }
}

TEST(SvgTint, GradientsAreFoundWhereAPlainSearchFindsThem) {
    const std::vector<const char*> pieces = {"<linearGradient",
                                             "<radialGradient",
                                             "<linearGradientX",
                                             "</linearGradient>",
                                             "</radialGradient>",
                                             " id=\"a\"",
                                             " id = \"b\"",
                                             " grid=\"a\"",
                                             " id=\"",
                                             "id",
                                             "\"",
                                             ">",
                                             "/>",
                                             " ",
                                             "<stop stop-color=\"#000\"/>",
                                             "stop-color:#fff;"};
    std::mt19937 random(7);
    std::uniform_int_distribution<std::size_t> pick(0, pieces.size() - 1);
    std::uniform_int_distribution<int> length(4, 24);
    int changed = 0;
    for (int round = 0; round < 8000; ++round) {
        QString text;
        for (int n = length(random); n > 0; --n)
            text += QLatin1String(pieces[pick(random)]);
        const QSet<QString> names{QStringLiteral("a")};
        const QString expected = recolored_by_plain_search(text, names);
        ASSERT_EQ(recolor_gradients(text, names, QStringLiteral("T")).toStdString(),
                  expected.toStdString())
            << "of " << text.toStdString();
        changed += expected != text;
    }
    EXPECT_GT(changed, 100) << "the texts must hit the case";
}
