#include "site/config_files.h"
#include "site/path_text.h"
#include "site/site_support.h"

namespace Lumenfold {
namespace {

namespace fs = std::filesystem;
using TestSupport::TempDir;
using TestSupport::write_file;

TEST(ClassifyConfig, GoesByNameThenByKeys) {
    struct Case {
        const char* name;
        const char* text;
        ConfigKind kind;
    };
    const Case cases[] = {
        {".lumenfold-site", "not JSON", ConfigKind::Site},
        {".lumenfold-project", "[]", ConfigKind::Project},
        {".lumenfold-project", R"({"branding": {}})", ConfigKind::Project},
        {"a", R"({"branding": null, "slug": "x"})", ConfigKind::Site},
        {"a", R"({"nav_menus": 1})", ConfigKind::Site},
        {"a", R"({"projects": []})", ConfigKind::Site},
        {"a", R"({"projects": {}, "slug": "x"})", ConfigKind::Project},
        {"a", R"({"slug": 5, "project": 1})", ConfigKind::Project},
        {"a", R"({"project": null})", ConfigKind::Manifest},
        {".lumenfold", R"({"includes": []})", ConfigKind::Manifest},
        {"a", R"({"external": 0})", ConfigKind::Manifest},
        {".lumenfold", R"({"build": {}})", ConfigKind::Unknown},
        {".lumenfold-Site", "{}", ConfigKind::Unknown},
        {"a", "[{\"slug\": 1}]", ConfigKind::Unknown},
        {"a", "\"slug\"", ConfigKind::Unknown},
        {"a", "{\"slug\": ", ConfigKind::Unknown},
        {"a", "{\"slug\": 1e999}", ConfigKind::Unknown},
        {"a", "", ConfigKind::Unknown},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.name) + ": " + c.text);
        const TempDir dir;
        write_file(dir / c.name, c.text);
        EXPECT_EQ(classify_config(dir / c.name), c.kind);
    }
    const TempDir dir;
    EXPECT_EQ(classify_config(dir / "missing"), ConfigKind::Unknown);
    EXPECT_EQ(classify_config(dir.path()), ConfigKind::Unknown);
    EXPECT_EQ(classify_config(dir / ".lumenfold-site"), ConfigKind::Site);
}

TEST(CheckFormat, RefusesLaterAndOddFormats) {
    const std::string integer = "'format' must be an integer (this Lumenfold reads up to format 1)";
    const auto declares = [](const std::string& value, bool advice) {
        return "declares format " + value + "; this Lumenfold reads up to format 1" +
               (advice ? " (update Lumenfold to open it)" : "");
    };
    struct Case {
        const char* text;
        std::string words;
    };
    const Case cases[] = {
        {R"({"format": 1})", ""},
        {R"({"name": "x"})", ""},
        {R"({})", ""},
        {R"([{"format": 2}])", ""},
        {R"("format")", ""},
        {R"(null)", ""},
        {R"({"format": 1.5})", integer},
        {R"({"format": 1.0})", integer},
        {R"({"format": "1"})", integer},
        {R"({"format": null})", integer},
        {R"({"format": true})", integer},
        {R"({"format": [1]})", integer},
        {R"({"format": 2})", declares("2", true)},
        {R"({"format": 9223372036854775807})", declares("9223372036854775807", true)},
        {R"({"format": 18446744073709551615})", declares("18446744073709551615", true)},
        {R"({"format": 0})", declares("0", false)},
        {R"({"format": -1})", declares("-1", false)},
        {R"({"format": -9223372036854775808})", declares("-9223372036854775808", false)},
    };
    const TempDir dir;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        write_file(dir / "config", c.text);
        std::string error;
        EXPECT_EQ(check_format(Json::parse(c.text), &error), c.words.empty());
        EXPECT_EQ(error, c.words);
        std::string file_error;
        EXPECT_EQ(check_format(dir / "config", &file_error), c.words.empty());
        EXPECT_EQ(file_error, c.words);
        EXPECT_EQ(check_format(dir / "config", nullptr), c.words.empty());
    }
    std::string error;
    write_file(dir / "config", "{\"format\": 2");
    EXPECT_TRUE(check_format(dir / "config", &error)) << "the caller's own parser will tell";
    EXPECT_TRUE(check_format(dir / "missing", &error));
    EXPECT_EQ(error, "");
}

TEST(EnsureFormat, PutsTheKeyFirstWhereItIsMissing) {
    const char* cases[][2] = {
        {R"({"b":{"format":3},"a":[1]})", R"({"format":1,"b":{"format":3},"a":[1]})"},
        {R"({"a":1,"format":7})", R"({"a":1,"format":7})"},
        {R"({"format":null})", R"({"format":null})"},
        {R"({})", R"({"format":1})"},
        {R"([1])", R"([1])"},
        {R"("x")", R"("x")"},
    };
    for (const auto& [before, after] : cases) {
        Json json = Json::parse(before);
        ensure_format(json);
        EXPECT_EQ(json.dump(), after);
    }
}

TEST(ReadTitle, FallsBackOnTheFoldersName) {
    struct Case {
        const char* text;
        ConfigKind kind;
        const char* title;
    };
    const Case cases[] = {
        {R"({"title": "T", "name": "N"})", ConfigKind::Site, "T"},
        {R"({"title": "T", "name": "N"})", ConfigKind::Project, "N"},
        {R"({"title": "T", "name": "N"})", ConfigKind::Manifest, "the folder"},
        {R"({"title": ""})", ConfigKind::Site, "the folder"},
        {R"({"title": null})", ConfigKind::Site, "the folder"},
        {R"({"name": 5})", ConfigKind::Project, "the folder"},
        {R"(["title"])", ConfigKind::Site, "the folder"},
        {"{", ConfigKind::Site, "the folder"},
    };
    const TempDir dir;
    const fs::path file = dir / "the folder" / "config";
    for (const Case& c : cases) {
        write_file(file, c.text);
        EXPECT_EQ(read_title(file, c.kind), c.title) << c.text;
    }
    EXPECT_EQ(read_title(dir / "elsewhere" / ".lumenfold-site", ConfigKind::Site), "elsewhere");
    EXPECT_EQ(read_title(dir / "a" / ".." / "b" / ".lumenfold-site", ConfigKind::Site), "b");
}

TEST(ReadProjectInfo, ReadsWhatItCan) {
    const TempDir dir;
    write_file(dir / "p" / ".lumenfold-project",
               R"({"slug": "s", "name": "n", "tagline": null, "parent_slug": "p",
                   "family_label": ["f"], "logo": "/images/l.svg"})");
    const ProjectInfo info = read_project_info("./p/.lumenfold-project", dir.path());
    EXPECT_EQ(info.slug, "s");
    EXPECT_EQ(info.name, "n");
    EXPECT_EQ(info.tagline, "");
    EXPECT_EQ(info.parent_slug, "p");
    EXPECT_EQ(info.family_label, "");
    EXPECT_EQ(info.logo, "/images/l.svg");
    EXPECT_EQ(read_project_info((dir / "p" / ".lumenfold-project").string(), "/").slug, "s");
    for (const char* reference : {"", ".", "./missing", "../../../../../..", "p"})
        EXPECT_EQ(read_project_info(reference, dir.path()).slug, "") << reference;
}

TEST(ReadHomeSections, GivesATypeForEachElement) {
    struct Case {
        const char* text;
        std::vector<std::string> types;
    };
    const Case cases[] = {
        {R"({"home": {"sections": [{"type": "custom"}, {}, 5, {"type": 1}, {"type": "socials"}]}})",
         {"custom", "", "", "", "socials"}},
        {R"({"home": {"sections": {"type": "custom"}}})", {}},
        {R"({"home": []})", {}},
        {R"({"home": {}})", {}},
        {R"({})", {}},
        {R"([])", {}},
        {"{", {}},
    };
    const TempDir dir;
    for (const Case& c : cases) {
        write_file(dir / "site", c.text);
        EXPECT_EQ(read_home_sections(dir / "site"), c.types) << c.text;
    }
    EXPECT_TRUE(read_home_sections(dir / "missing").empty());
}

TEST(ResolveReference, MakesFormsOfOnePathEqual) {
    const TempDir dir;
    write_file(dir / "site" / "p" / "file", "{}");
    fs::create_directory_symlink(dir / "site", dir / "link");
    const fs::path existing = dir / "site" / "p" / "file";
    for (const char* form :
         {"p/file", "./p/file", "p//file", "./p/../p/./file", "../link/p/file", "../site/p/file"})
        EXPECT_EQ(resolve_reference(form, dir / "site"), existing) << form;
    EXPECT_EQ(resolve_reference("p/file", dir / "link"), existing);
    EXPECT_EQ(resolve_reference(existing.string(), "/elsewhere"), existing);

    // Nothing there: as far as there is something, and by its letters from there on.
    const fs::path missing = dir / "site" / "new" / "file";
    for (const char* form : {"new/file", "./new//file", "new/x/../file", "../link/new/file"})
        EXPECT_EQ(resolve_reference(form, dir / "site"), missing) << form;
    EXPECT_EQ(resolve_reference("a/../b", "/no/such/place"), "/no/such/place/b");
    EXPECT_EQ(comparable_path("no-such-file"), fs::current_path() / "no-such-file");

    fs::create_symlink(dir / "loop", dir / "loop");
    EXPECT_EQ(resolve_reference("loop/x", dir.path()), dir / "loop" / "x");
    const std::string endless(5000, 'n');
    EXPECT_EQ(resolve_reference(endless, dir.path()), dir / endless);
}

TEST(ResolveImage, FindsFilesBelowTheRoot) {
    const TempDir dir;
    write_file(dir / "images" / "logo é.svg", "<svg/>");
    const fs::path logo = dir / "images" / "logo é.svg";
    for (const char* reference :
         {"/images/logo é.svg", "images/logo é.svg", "///images/logo é.svg"})
        EXPECT_EQ(resolve_image(dir.path(), reference), logo) << reference;
    for (const char* reference : {"", "/", "///", "/images", "/images/other.svg"})
        EXPECT_EQ(resolve_image(dir.path(), reference), "") << reference;
}

TEST(ResolveProjectLogo, PrefersTheSiteAbove) {
    const TempDir dir;
    const fs::path project = dir / "projects" / "p";
    write_file(project / "own.svg", "own");
    write_file(project / "images" / "both.svg", "project");
    write_file(dir / "images" / "both.svg", "site");
    EXPECT_EQ(find_site_above(project), project) << "no site: the folder that was given";
    EXPECT_EQ(resolve_project_logo(project, "images/both.svg"), project / "images/both.svg");

    write_file(dir / ".lumenfold-site", "{}");
    EXPECT_EQ(find_site_above(project), dir.path());
    EXPECT_EQ(find_site_above(dir.path()), dir.path());
    EXPECT_EQ(find_site_above(project / "missing" / ".."), dir.path());
    EXPECT_EQ(resolve_project_logo(project, "/images/both.svg"), dir / "images" / "both.svg");
    EXPECT_EQ(resolve_project_logo(project, "own.svg"), project / "own.svg");
    EXPECT_EQ(resolve_project_logo(project, "none.svg"), "");
    EXPECT_EQ(resolve_project_logo(project, ""), "");
}

} // namespace
} // namespace Lumenfold
