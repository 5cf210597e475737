#include "app/panels/tab_preview.h"
#include "app_driver.h"
#include "site/favicon.h"
#include "site_paths.h"

#include <gtest/gtest.h>

namespace TestSupport {
namespace {

const std::string LOGO_IMAGE = LOGO_PICKER + "/Avatar/Logo Image";
const std::string LOGO_BROWSE = LOGO_PICKER + "/Controls Row/Browse Button";
const std::string FAVICON_BROWSE = FAVICONS + "/Controls Row/Browse Button";
const std::string BACKGROUND = FAVICONS + "/Background Row/Background Field";
const std::string LARGE_TILE = FAVICONS + "/Preview Row/Large Cell/Tile/Image";
const std::string DESKTOP = TABS_ROW + "/Desktop Column/Tab";
const std::string MOBILE = TABS_ROW + "/Mobile Column/Tab";
const std::string DONE = "Generated into favicon/ (ships with the next build).";

TEST(LogoHeight, AcceptsWhatTheBuilderReads) {
    using Lumenfold::is_valid_height;
    for (const char* good :
         {"", "0", "7", "40", "040", "000", "40px", "40PX", "40pX", "12p", "12P"})
        EXPECT_TRUE(is_valid_height(good)) << good;
    for (const char* bad : {"41", "1234", "0040", "px", "p", "-1", "4 0", " 4", "4 px", "4pxx",
                            "4x", "4p ", "4.0", "x", "4em", "999999999999999999999"})
        EXPECT_FALSE(is_valid_height(bad)) << bad;
}

TEST(LogoHeight, ReadsStoredTexts) {
    struct Case {
        const char* text;
        int pixels;
    };
    for (const Case& row : {Case{"", 25},
                            {"30", 30},
                            {" 30px\t", 30},
                            {"30PX", 30},
                            {"999", 999},
                            {"1000", 25},
                            {"px", 25},
                            {"3p", 25},
                            {"30 px", 25},
                            {"-3", 25}})
        EXPECT_EQ(Lumenfold::parse_height(row.text, 25), row.pixels) << row.text;
}

struct WebsitePanel : testing::Test {
    AppDriver ui;
    std::filesystem::path file = ui.dir / "site/.lumenfold-site";
    std::vector<Lumenfold::FaviconRequest> requests;
    std::string generator_error;

    WebsitePanel() {
        Lumenfold::favicon_generator() = [this](const Lumenfold::FaviconRequest& request) {
            requests.push_back(request);
            if (generator_error.empty())
                for (const char* name :
                     {"favicon-32x32.png", "favicon-16x16.png", "android-chrome-512x512.png"})
                    write_file(std::filesystem::path(request.output_dir) / name, "png");
            return generator_error;
        };
    }
    ~WebsitePanel() override { Lumenfold::favicon_generator() = nullptr; }

    void open(const std::string& text) {
        write_file(file, text);
        ui.start({file});
    }
    std::string image(const std::string& name) {
        return (ui.dir / ("site/images/" + name)).string();
    }
    std::string pick(const std::string& button, const std::string& path) {
        ui.platform.next_picks = {path};
        ui.click(button);
        return ui.platform.picks.empty() ? std::string() : ui.platform.picks.back().title;
    }
    std::string saved() {
        ui.advance(500);
        return read_file(file);
    }
};

TEST_F(WebsitePanel, FillsEveryField) {
    open(R"({"title": "t", "description": "d", "url": "u", "copyright": "c", "output": "o",
             "branding": {"logo_height": "30px", "logo_height_mobile": "20", "tab_text": "x",
             "favicon_background": "#123456"}})");
    struct Case {
        std::string path, text;
    };
    for (const Case& row : {Case{TITLE_FIELD, "t"},
                            {WEBSITE + "/Site Form/Description Field", "d"},
                            {WEBSITE + "/Site Form/URL Field", "u"},
                            {WEBSITE + "/Site Form/Copyright Field", "c"},
                            {OUTPUT_FIELD, "o"},
                            {LOGO_HEIGHT, "30px"},
                            {LOGO_HEIGHT_MOBILE, "20"},
                            {TAB_TEXT, "x"},
                            {BACKGROUND, "#123456"}}) {
        EXPECT_EQ(ui.text(row.path), row.text);
        ui.type(row.path, "7");
    }
    EXPECT_EQ(saved(), "{\n  \"title\": \"7\",\n  \"description\": \"7\",\n  \"url\": \"7\",\n"
                       "  \"copyright\": \"7\",\n  \"output\": \"7\",\n  \"branding\": {\n"
                       "    \"logo_height\": \"7\",\n    \"logo_height_mobile\": \"7\",\n"
                       "    \"tab_text\": \"7\",\n    \"favicon_background\": \"7\"\n  }\n}\n");
}

TEST_F(WebsitePanel, PreviewsTheTab) {
    write_file(image("l.svg"), "<svg/>");
    open("{}");
    EXPECT_EQ(ui.text(DESKTOP + "/Text"), "—");
    EXPECT_FALSE(ui.shown(DESKTOP + "/Logo"));
    ui.type(TAB_TEXT, "Docs");
    EXPECT_EQ(ui.text(MOBILE + "/Text"), "Docs");
    EXPECT_EQ(pick(LOGO_BROWSE, image("l.svg")), "Select a logo image (copied into your site)");
    EXPECT_EQ(ui.source(DESKTOP + "/Logo"), image("l.svg"));
    struct Case {
        std::string desktop, mobile;
        double desktop_height, mobile_height; ///< 0: no logo
    };
    for (const Case& row : {Case{"", "", 25, 25},
                            {"30px", "", 30, 30},
                            {"30px", "20p", 30, 30},
                            {"30", "10", 30, 10},
                            {"0", "12", 0, 12},
                            {"41", "12", 0, 12}}) {
        SCOPED_TRACE(row.desktop + "/" + row.mobile);
        ui.type(LOGO_HEIGHT, row.desktop);
        ui.type(LOGO_HEIGHT_MOBILE, row.mobile);
        EXPECT_EQ(ui.shown(DESKTOP + "/Logo") ? ui.height(DESKTOP + "/Logo") : 0,
                  row.desktop_height);
        EXPECT_EQ(ui.shown(MOBILE + "/Logo") ? ui.height(MOBILE + "/Logo") : 0, row.mobile_height);
    }
    ui.type(TAB_TEXT, "");
    EXPECT_FALSE(ui.shown(MOBILE + "/Text"));
    EXPECT_NE(saved().find(R"("logo_height": "0")"), std::string::npos); // "41" was not stored
}

TEST_F(WebsitePanel, ImportsALogo) {
    open(R"({"branding": {"favicon_from_logo": false}})");
    EXPECT_FALSE(ui.shown(LOGO_IMAGE));
    write_file(ui.dir / "elsewhere/lögo.svg", "<svg/>");
    pick(LOGO_BROWSE, (ui.dir / "elsewhere/lögo.svg").string());
    EXPECT_EQ(ui.platform.picks.back().directory, file.parent_path().string());
    EXPECT_EQ(ui.platform.picks.back().filter, "Images (*.svg *.png *.jpg *.jpeg *.webp *.gif)");
    EXPECT_EQ(ui.source(LOGO_IMAGE), image("lögo.svg"));
    EXPECT_EQ(ui.source(left_tab(1) + "/Logo"), image("lögo.svg"));
    EXPECT_NE(saved().find(R"("logo_path": "/images/lögo.svg")"), std::string::npos);
    EXPECT_TRUE(requests.empty());

    // The same name again: taken away for one render, so that the new picture is read.
    write_file(ui.dir / "elsewhere/lögo.svg", "<svg width='2'/>");
    pick(LOGO_BROWSE, (ui.dir / "elsewhere/lögo.svg").string());
    EXPECT_EQ(ui.platform.picks.back().directory, (file.parent_path() / "images").string());
    EXPECT_EQ(read_file(image("lögo.svg")), "<svg width='2'/>");
    EXPECT_EQ(ui.source(LOGO_IMAGE), "");
    ui.advance(30);
    EXPECT_EQ(ui.source(LOGO_IMAGE), image("lögo.svg"));
    EXPECT_EQ(ui.source(left_tab(1) + "/Logo"), image("lögo.svg"));

    pick(LOGO_BROWSE, image("lögo.svg")); // over itself: left as it is
    EXPECT_EQ(read_file(image("lögo.svg")), "<svg width='2'/>");
    const std::string before = saved();
    pick(LOGO_BROWSE, (ui.dir / "elsewhere/gone.svg").string());
    pick(LOGO_BROWSE, "");
    EXPECT_EQ(saved(), before);
    EXPECT_EQ(ui.source(LOGO_IMAGE), image("lögo.svg"));
}

TEST_F(WebsitePanel, ALogoThatIsGoneIsNotShown) {
    open(R"({"branding": {"logo_path": "/images/gone.svg", "favicon_from_logo": true}})");
    EXPECT_FALSE(ui.shown(LOGO_IMAGE));
    EXPECT_FALSE(ui.shown(LEFT_TABS + "/config-1/Logo"));
    ui.type(BACKGROUND, "#abcdef");
    EXPECT_TRUE(requests.empty());
}

TEST_F(WebsitePanel, ImageFaultsAreSilent) {
    write_file(ui.dir / "l.svg", "<svg/>");
    open(R"({"title": "T"})");
    write_file(file.parent_path() / "images", "a file in the folder's place");
    const std::string before = read_file(file);
    pick(LOGO_BROWSE, (ui.dir / "l.svg").string());
    pick(FAVICON_BROWSE, (ui.dir / "l.svg").string());
    EXPECT_EQ(saved(), before);
    EXPECT_EQ(ui.take_message(), "");
    EXPECT_FALSE(ui.shown(LOGO_IMAGE));
    EXPECT_FALSE(ui.shown(HINT));

    std::filesystem::remove(file.parent_path() / "images");
    pick(LOGO_BROWSE, (ui.dir / "l.svg").string());
    EXPECT_TRUE(ui.shown(DESKTOP + "/Logo"));
    std::filesystem::remove(image("l.svg")); // while it is shown
    ui.type(LOGO_HEIGHT, "10");
    EXPECT_FALSE(ui.shown(DESKTOP + "/Logo"));
    EXPECT_EQ(ui.text(DESKTOP + "/Text"), "—");
}

TEST_F(WebsitePanel, FaviconsFromAnImage) {
    open(R"({"branding": {"favicon_background": "#112233"}})");
    EXPECT_FALSE(ui.shown(FAVICONS + "/Preview Row"));
    EXPECT_FALSE(ui.shown(HINT));
    write_file(ui.dir / "i.png", "png");
    EXPECT_EQ(pick(FAVICON_BROWSE, (ui.dir / "i.png").string()),
              "Select a favicon source image (copied into your site)");
    EXPECT_EQ(ui.platform.picks.back().filter, "Images (*.svg *.png *.jpg *.jpeg *.webp)");
    ASSERT_EQ(requests.size(), 1u);
    EXPECT_EQ(requests[0].source, image("i.png"));
    EXPECT_EQ(requests[0].output_dir, (file.parent_path() / "favicon").string());
    EXPECT_EQ(requests[0].background, "#112233");
    EXPECT_EQ(ui.text(HINT), DONE);
    ui.advance(30);
    EXPECT_EQ(ui.source(LARGE_TILE),
              (file.parent_path() / "favicon/android-chrome-512x512.png").string());
    EXPECT_NE(saved().find(R"("favicon_source": "/images/i.png")"), std::string::npos);

    struct Case {
        std::string colour;
        bool generates;
    };
    for (const Case& row : {Case{"#12", false},
                            {"#1234567", false},
                            {"#12345g", false},
                            {"123456", false},
                            {"#12ABef", true},
                            {"", true}}) {
        const std::size_t before = requests.size();
        ui.type(BACKGROUND, row.colour);
        EXPECT_EQ(requests.size() > before, row.generates) << row.colour;
        EXPECT_NE(saved().find("\"favicon_background\": \"" + row.colour + "\""),
                  std::string::npos);
    }
    EXPECT_EQ(ui.source(LARGE_TILE),
              (file.parent_path() / "favicon/android-chrome-512x512.png").string());
    generator_error = "no such luck";
    pick(FAVICON_BROWSE, (ui.dir / "i.png").string());
    EXPECT_EQ(ui.text(HINT), "no such luck");
    Lumenfold::favicon_generator() = nullptr;
    pick(FAVICON_BROWSE, (ui.dir / "i.png").string());
    EXPECT_EQ(ui.text(HINT), "Favicon generation is unavailable in this build.");
}

TEST_F(WebsitePanel, FaviconsFollowTheLogo) {
    open(R"({"title": "T", "branding": {"favicon_source": "/images/i.png"}})");
    ui.click(FROM_LOGO);
    EXPECT_FALSE(ui.app->is_checked(FROM_LOGO));
    EXPECT_EQ(ui.text(HINT), "Set a logo above first.");

    write_file(image("l.svg"), "<svg/>");
    pick(LOGO_BROWSE, image("l.svg"));
    ui.type(TITLE_FIELD, "U"); // pending edits are written first
    generator_error = "broken";
    ui.click(FROM_LOGO);
    EXPECT_FALSE(ui.app->is_checked(FROM_LOGO));
    EXPECT_EQ(ui.text(HINT), "broken");
    generator_error.clear();
    ui.click(FROM_LOGO);
    EXPECT_TRUE(ui.app->is_checked(FROM_LOGO));
    EXPECT_EQ(ui.text(HINT), DONE);
    const std::string following = "{\n  \"title\": \"U\",\n  \"branding\": {\n"
                                  "    \"logo_path\": \"/images/l.svg\",\n"
                                  "    \"favicon_from_logo\": true\n  }\n}\n";
    EXPECT_EQ(read_file(file), following);

    write_file(ui.dir / "m.svg", "<svg/>");
    pick(LOGO_BROWSE, (ui.dir / "m.svg").string());
    EXPECT_EQ(requests.back().source, image("m.svg"));
    ui.advance(500);
    ui.click(FROM_LOGO);
    EXPECT_FALSE(ui.shown(HINT));
    EXPECT_EQ(read_file(file), "{\n  \"title\": \"U\",\n  \"branding\": {\n"
                               "    \"logo_path\": \"/images/m.svg\"\n  }\n}\n");
    ui.click(SITE_TEXT_TAB); // the text view went along
    EXPECT_EQ(ui.text(SITE_STATUS), "");
    EXPECT_EQ(ui.text(SITE_TEXT), read_file(file));
}

TEST_F(WebsitePanel, AnImageOfItsOwnEndsFollowingTheLogo) {
    write_file(image("l.svg"), "<svg/>");
    write_file(image("i.png"), "png");
    open(R"({"branding": {"logo_path": "/images/l.svg", "favicon_from_logo": true}})");
    EXPECT_TRUE(ui.app->is_checked(FROM_LOGO));
    pick(FAVICON_BROWSE, image("i.png"));
    EXPECT_FALSE(ui.app->is_checked(FROM_LOGO));
    EXPECT_EQ(saved(), "{\n  \"branding\": {\n    \"logo_path\": \"/images/l.svg\",\n"
                       "    \"favicon_source\": \"/images/i.png\"\n  }\n}\n");
}

TEST_F(WebsitePanel, TheBackgroundDefaultsToTheThemeOfTheSite) {
    const auto& themes = ui.app->themes();
    for (const auto& [name, theme] : themes) {
        AppDriver other;
        const auto site = other.dir / ".lumenfold-site";
        write_file(site, R"({"corvel": {"default_theme": ")" + name + "\"}}");
        other.start({site});
        EXPECT_EQ(other.text(BACKGROUND), Corvel::theme_value(theme, "Primary")) << name;
        other.advance(600);
        EXPECT_EQ(read_file(site).find("favicon_background"), std::string::npos);
    }
    open(R"({"corvel": {"default_theme": "nowhere"}})");
    EXPECT_EQ(ui.text(BACKGROUND), "#ffffff");
}

TEST_F(WebsitePanel, ALateRefreshOfAnotherSiteIsDropped) {
    write_file(ui.dir / "other/.lumenfold-site", "{}");
    write_file(file, "{}");
    write_file(image("i.png"), "png");
    ui.start({ui.dir / "other/.lumenfold-site", file});
    pick(FAVICON_BROWSE, image("i.png"));
    ui.row_action(left_tab(1), "activate");
    ui.advance(1000);
    EXPECT_FALSE(ui.shown(FAVICONS + "/Preview Row"));
    EXPECT_FALSE(ui.shown(HINT));
}

} // namespace
} // namespace TestSupport
