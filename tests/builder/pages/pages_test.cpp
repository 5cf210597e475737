#include "builder/pages/html_writer.h"
#include "builder/pages/palette.h"
#include "sample_site.h"
#include "support/case_file.h"

#include <cstdio>
#include <fstream>
#include <functional>
#include <gumbo.h>
#include <memory>
#include <set>

namespace Lumenfold::Builder {
namespace {

/// A page as a browser reads it.
class ParsedPage {
public:
    explicit ParsedPage(const std::string& html)
        : html_(html)
        , output_(
              gumbo_parse_with_options(&kGumboDefaultOptions, html_.data(), html_.size()),
              [](GumboOutput* output) { gumbo_destroy_output(&kGumboDefaultOptions, output); }) {}

    unsigned errors() const { return output_->errors.length; }
    void each(const std::function<void(const GumboElement&)>& look) const {
        visit(*output_->root, look);
    }

    static std::string value(const GumboElement& element, const char* name) {
        const GumboAttribute* attribute = gumbo_get_attribute(&element.attributes, name);
        return attribute == nullptr ? "" : attribute->value;
    }

private:
    static void visit(const GumboNode& node, const std::function<void(const GumboElement&)>& look) {
        if (node.type != GUMBO_NODE_ELEMENT)
            return;
        look(node.v.element);
        for (unsigned i = 0; i < node.v.element.children.length; ++i)
            visit(*static_cast<const GumboNode*>(node.v.element.children.data[i]), look);
    }

    std::string html_;
    std::unique_ptr<GumboOutput, void (*)(GumboOutput*)> output_;
};

/// What a strict policy and a careful browser want of every page.
void expect_sound(const SiteAsset& page) {
    const ParsedPage parsed(page.bytes);
    EXPECT_EQ(parsed.errors(), 0u);
    EXPECT_EQ(page.bytes.find(ROOT_MARK), std::string::npos);
    int headings = 0;
    std::set<std::string> ids;
    parsed.each([&](const GumboElement& element) {
        headings += element.tag == GUMBO_TAG_H1 ? 1 : 0;
        const std::string id = ParsedPage::value(element, "id");
        EXPECT_TRUE(id.empty() || ids.insert(id).second) << "twice: " << id;
        EXPECT_NE(element.tag, GUMBO_TAG_STYLE);
        if (element.tag == GUMBO_TAG_SCRIPT && ParsedPage::value(element, "src").empty()) {
            EXPECT_EQ(ParsedPage::value(element, "type"), "application/ld+json");
        }
        for (unsigned i = 0; i < element.attributes.length; ++i) {
            const std::string name =
                static_cast<const GumboAttribute*>(element.attributes.data[i])->name;
            EXPECT_TRUE(name != "style" && !name.starts_with("on")) << name;
        }
    });
    EXPECT_EQ(headings, 1);
}

bool is_page(const SiteAsset& asset) {
    return asset.path.ends_with(".html");
}

TEST(Pages, AreSoundWhateverTheirTextsHold) {
    for (const bool hostile : {false, true}) {
        SampleLook look;
        look.hostile = hostile;
        for (const SiteAsset& page : sample_site(look))
            if (is_page(page)) {
                SCOPED_TRACE(page.path + (hostile ? ", hostile" : ""));
                expect_sound(page);
            }
    }
}

TEST(Pages, LeadTheReaderOn) {
    const auto page = [](const std::string& path, const SampleLook& look = {}) {
        for (const SiteAsset& asset : sample_site(look))
            if (asset.path == path)
                return asset.bytes;
        return std::string();
    };
    const auto holds = [](const std::string& html, const std::string& piece) {
        EXPECT_NE(html.find(piece), std::string::npos) << piece;
    };
    const std::string old = page("gauge/core/3.0/topics/units.html");
    holds(old, "You are reading about version 3.0. The newest is 3.2. "
               "<a href=\"../../../../gauge/core/topics/units.html\">Read this page for 3.2</a>");
    const std::string topic = page("gauge/core/topics/units.html");
    holds(topic,
          "<a href=\"../../../gauge/core/topics/units.html\" aria-current=\"page\">Units</a>");
    holds(topic, "class=\"next\" href=\"../../../gauge/core/topics/errors.html\"");
    holds(topic, "<a href=\"#what-a-series-is\">What a series is</a>");
    const std::string project = page("gauge/core/index.html");
    holds(project, "\"softwareVersion\":\"3.2\"");
    holds(project, "<dd>");
    EXPECT_LT(project.find("Linux (x86-64)"), project.find("class=\"prose\"")) << "downloads first";
    const std::string bare = page("sandbar/index.html");
    holds(bare, "<meta name=\"robots\" content=\"noindex\">");
    EXPECT_EQ(bare.find("<details class=\"versions\""), std::string::npos);
    SampleLook arabic;
    arabic.language = "ar-EG";
    holds(page("index.html", arabic), "<html lang=\"ar-EG\" dir=\"rtl\">");
}

TEST(Pages, EscapeTextsAndAddresses) {
    TestSupport::expect_lines("tests/builder/pages/cases/texts.txt", [](const std::string& text) {
        std::string out;
        append_escaped(out, text);
        return out;
    });
    TestSupport::expect_lines("tests/builder/pages/cases/links.txt", [](const std::string& text) {
        std::string out;
        append_address(out, text);
        return out;
    });
    std::string out;
    append_address(out, ROOT_MARK + std::string("a\x01") + "b.html");
    EXPECT_EQ(place_page(out, way_to_root("gauge/core/index.html")), "../../ab.html");
}

TEST(Pages, AreSmallForAFirstVisit) {
    const TestSupport::TempDir folder;
    std::size_t bytes = 0;
    std::size_t script = 0;
    for (const SiteAsset& asset : sample_site({})) {
        const bool loaded =
            asset.path == "gauge/core/topics/units.html" || asset.path.starts_with("assets/");
        if (asset.path.ends_with(".js") && loaded)
            script += asset.bytes.size();
        if (!loaded)
            continue;
        std::ofstream(folder / "file", std::ios::binary) << asset.bytes;
        const std::string command = "gzip -9 -c '" + (folder / "file").string() + "' | wc -c";
        std::unique_ptr<FILE, int (*)(FILE*)> pipe(::popen(command.c_str(), "r"), ::pclose);
        unsigned long size = 0;
        ASSERT_EQ(std::fscanf(pipe.get(), "%lu", &size), 1);
        bytes += size;
    }
    EXPECT_LT(bytes, 20000u);
    EXPECT_GT(bytes, 5000u) << "something was not counted";
    EXPECT_LT(script, 10240u);
}

const std::vector<std::string_view> INKS{"text", "muted",   "accent",  "note",
                                         "tip",  "warning", "caution", "important"};
const std::vector<std::string_view> CODE{"hl-k", "hl-s", "hl-c", "hl-n", "hl-t",
                                         "hl-f", "hl-v", "hl-i", "hl-d", "hl-m"};

void expect_readable(const Palette& palette) {
    const auto reads = [&](std::string_view ink, std::string_view ground, double least) {
        EXPECT_GE(contrast(palette.at(ink), palette.at(ground)), least) << ink << " on " << ground;
    };
    for (const std::string_view ink : INKS)
        for (const char* ground : {"page", "surface", "soft", "hero-start", "hero-end"})
            reads(ink, ground, TEXT_CONTRAST);
    for (const std::string_view ink : CODE)
        for (const char* ground : {"page", "surface"})
            reads(ink, ground, TEXT_CONTRAST);
    reads("on-accent", "accent", TEXT_CONTRAST);
    reads("edge", "page", EDGE_CONTRAST);
}

TEST(Palette, ReadsInEveryShippedTheme) {
    for (const char* name : {"dark", "harbour", "heather", "high-contrast", "light", "parchment"})
        for (const char* accent : {"", "#1d6f86", "#ffff00", "#000000", "#ffffff", "no colour"}) {
            SCOPED_TRACE(std::string(name) + " " + accent);
            Messages messages;
            expect_readable(make_palette(shipped_theme(name), accent, messages));
            if (parse_color(accent) == std::nullopt) {
                EXPECT_TRUE(messages.empty()) << messages[0].text;
            }
        }
}

TEST(Palette, ReadsInAnyThemeAndTellsWhatItMoved) {
    for (const char* color : {"#000000", "#777777", "#ffffff", "#ff0000", "#0000ff", "nonsense"})
        for (const char* text : {"#000000", "#777777", "#ffffff"}) {
            SCOPED_TRACE(std::string(color) + " " + text);
            Corvel::Theme theme;
            for (const auto& [key, value] : Corvel::default_theme())
                theme.values[key] = value;
            theme.values["Foreground"] = std::string(text);
            theme.values["Secondary"] = std::string(color);
            theme.values["Primary"] = std::string("#808080");
            Messages messages;
            expect_readable(make_palette(theme, "#808080", messages));
            EXPECT_FALSE(messages.empty());
            for (const Message& message : messages)
                EXPECT_EQ(message.severity, Severity::Advanced);
        }
}

} // namespace
} // namespace Lumenfold::Builder
