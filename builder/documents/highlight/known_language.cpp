#include "builder/documents/highlight/languages.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>

namespace Lumenfold::Builder {
namespace {

struct Name {
    std::string_view name;
    KnownLanguage known;
};

// In the order of the names.
constexpr Name NAMES[] = {
    {"arduino", {CodeKind::Table, &CPP}},
    {"bash", {CodeKind::Table, &SHELL}},
    {"bash-session", {CodeKind::Session, &SHELL}},
    {"c", {CodeKind::Table, &C_CODE}},
    {"c#", {CodeKind::Table, &CSHARP}},
    {"c++", {CodeKind::Table, &CPP}},
    {"cc", {CodeKind::Table, &CPP}},
    {"cfg", {CodeKind::Table, &INI}},
    {"cjs", {CodeKind::Table, &JAVASCRIPT}},
    {"clj", {CodeKind::Table, &LISP}},
    {"clojure", {CodeKind::Table, &LISP}},
    {"cmake", {CodeKind::Table, &CMAKE}},
    {"cmakelists", {CodeKind::Table, &CMAKE}},
    {"conf", {CodeKind::Table, &INI}},
    {"console", {CodeKind::Session, &SHELL}},
    {"containerfile", {CodeKind::Table, &DOCKER}},
    {"cpp", {CodeKind::Table, &CPP}},
    {"cs", {CodeKind::Table, &CSHARP}},
    {"csharp", {CodeKind::Table, &CSHARP}},
    {"css", {CodeKind::StyleSheet, nullptr}},
    {"cts", {CodeKind::Table, &TYPESCRIPT}},
    {"cxx", {CodeKind::Table, &CPP}},
    {"dart", {CodeKind::Table, &DART}},
    {"desktop", {CodeKind::Table, &INI}},
    {"diff", {CodeKind::Difference, nullptr}},
    {"docker", {CodeKind::Table, &DOCKER}},
    {"dockerfile", {CodeKind::Table, &DOCKER}},
    {"dotenv", {CodeKind::Table, &INI}},
    {"editorconfig", {CodeKind::Table, &INI}},
    {"elisp", {CodeKind::Table, &LISP}},
    {"elixir", {CodeKind::Table, &ELIXIR}},
    {"env", {CodeKind::Table, &INI}},
    {"ex", {CodeKind::Table, &ELIXIR}},
    {"exs", {CodeKind::Table, &ELIXIR}},
    {"f90", {CodeKind::Table, &FORTRAN}},
    {"f95", {CodeKind::Table, &FORTRAN}},
    {"fish", {CodeKind::Table, &SHELL}},
    {"fortran", {CodeKind::Table, &FORTRAN}},
    {"geojson", {CodeKind::Table, &JSON_CODE}},
    {"gitconfig", {CodeKind::Table, &INI}},
    {"glsl", {CodeKind::Table, &GLSL}},
    {"gnumake", {CodeKind::Table, &MAKE}},
    {"go", {CodeKind::Table, &GO}},
    {"golang", {CodeKind::Table, &GO}},
    {"gql", {CodeKind::Table, &GRAPHQL}},
    {"gradle", {CodeKind::Table, &GROOVY}},
    {"graphql", {CodeKind::Table, &GRAPHQL}},
    {"groovy", {CodeKind::Table, &GROOVY}},
    {"h", {CodeKind::Table, &C_CODE}},
    {"haskell", {CodeKind::Table, &HASKELL}},
    {"hcl", {CodeKind::Table, &HCL}},
    {"hh", {CodeKind::Table, &CPP}},
    {"hlsl", {CodeKind::Table, &GLSL}},
    {"hpp", {CodeKind::Table, &CPP}},
    {"hs", {CodeKind::Table, &HASKELL}},
    {"htm", {CodeKind::Markup, nullptr}},
    {"html", {CodeKind::Markup, nullptr}},
    {"hxx", {CodeKind::Table, &CPP}},
    {"ini", {CodeKind::Table, &INI}},
    {"ino", {CodeKind::Table, &CPP}},
    {"java", {CodeKind::Table, &JAVA}},
    {"javascript", {CodeKind::Table, &JAVASCRIPT}},
    {"jl", {CodeKind::Table, &JULIA}},
    {"js", {CodeKind::Table, &JAVASCRIPT}},
    {"json", {CodeKind::Table, &JSON_CODE}},
    {"json5", {CodeKind::Table, &JSON_CODE}},
    {"jsonc", {CodeKind::Table, &JSON_CODE}},
    {"jsonl", {CodeKind::Table, &JSON_CODE}},
    {"jsx", {CodeKind::Table, &JAVASCRIPT}},
    {"julia", {CodeKind::Table, &JULIA}},
    {"kotlin", {CodeKind::Table, &KOTLIN}},
    {"ksh", {CodeKind::Table, &SHELL}},
    {"kt", {CodeKind::Table, &KOTLIN}},
    {"kts", {CodeKind::Table, &KOTLIN}},
    {"less", {CodeKind::StyleSheet, nullptr}},
    {"lisp", {CodeKind::Table, &LISP}},
    {"lua", {CodeKind::Table, &LUA}},
    {"lyr", {CodeKind::Table, &LYR}},
    {"make", {CodeKind::Table, &MAKE}},
    {"makefile", {CodeKind::Table, &MAKE}},
    {"markdown", {CodeKind::Markdown, nullptr}},
    {"md", {CodeKind::Markdown, nullptr}},
    {"meson", {CodeKind::Table, &MESON}},
    {"mjs", {CodeKind::Table, &JAVASCRIPT}},
    {"mk", {CodeKind::Table, &MAKE}},
    {"mts", {CodeKind::Table, &TYPESCRIPT}},
    {"mysql", {CodeKind::Table, &SQL}},
    {"ninja", {CodeKind::Table, &NINJA}},
    {"nix", {CodeKind::Table, &NIX}},
    {"node", {CodeKind::Table, &JAVASCRIPT}},
    {"patch", {CodeKind::Difference, nullptr}},
    {"perl", {CodeKind::Table, &PERL}},
    {"php", {CodeKind::Table, &PHP}},
    {"pl", {CodeKind::Table, &PERL}},
    {"plist", {CodeKind::Markup, nullptr}},
    {"plsql", {CodeKind::Table, &SQL}},
    {"postgres", {CodeKind::Table, &SQL}},
    {"postgresql", {CodeKind::Table, &SQL}},
    {"powershell", {CodeKind::Table, &POWERSHELL}},
    {"properties", {CodeKind::Table, &INI}},
    {"proto", {CodeKind::Table, &PROTO}},
    {"protobuf", {CodeKind::Table, &PROTO}},
    {"ps1", {CodeKind::Table, &POWERSHELL}},
    {"pwsh", {CodeKind::Table, &POWERSHELL}},
    {"py", {CodeKind::Table, &PYTHON}},
    {"py3", {CodeKind::Table, &PYTHON}},
    {"pyi", {CodeKind::Table, &PYTHON}},
    {"python", {CodeKind::Table, &PYTHON}},
    {"python3", {CodeKind::Table, &PYTHON}},
    {"qml", {CodeKind::Table, &QML}},
    {"r", {CodeKind::Table, &R_CODE}},
    {"rb", {CodeKind::Table, &RUBY}},
    {"rs", {CodeKind::Table, &RUST}},
    {"rss", {CodeKind::Markup, nullptr}},
    {"ruby", {CodeKind::Table, &RUBY}},
    {"rust", {CodeKind::Table, &RUST}},
    {"scala", {CodeKind::Table, &SCALA}},
    {"scheme", {CodeKind::Table, &LISP}},
    {"scss", {CodeKind::StyleSheet, nullptr}},
    {"sh", {CodeKind::Table, &SHELL}},
    {"sh-session", {CodeKind::Session, &SHELL}},
    {"shell", {CodeKind::Table, &SHELL}},
    {"shell-session", {CodeKind::Session, &SHELL}},
    {"sql", {CodeKind::Table, &SQL}},
    {"sqlite", {CodeKind::Table, &SQL}},
    {"svg", {CodeKind::Markup, nullptr}},
    {"swift", {CodeKind::Table, &SWIFT}},
    {"systemd", {CodeKind::Table, &INI}},
    {"terminal", {CodeKind::Session, &SHELL}},
    {"terraform", {CodeKind::Table, &HCL}},
    {"tf", {CodeKind::Table, &HCL}},
    {"toml", {CodeKind::Table, &TOML}},
    {"ts", {CodeKind::Table, &TYPESCRIPT}},
    {"tsx", {CodeKind::Table, &TYPESCRIPT}},
    {"typescript", {CodeKind::Table, &TYPESCRIPT}},
    {"udiff", {CodeKind::Difference, nullptr}},
    {"vue", {CodeKind::Markup, nullptr}},
    {"webmanifest", {CodeKind::Table, &JSON_CODE}},
    {"wgsl", {CodeKind::Table, &GLSL}},
    {"xhtml", {CodeKind::Markup, nullptr}},
    {"xml", {CodeKind::Markup, nullptr}},
    {"xsl", {CodeKind::Markup, nullptr}},
    {"yaml", {CodeKind::Table, &YAML}},
    {"yml", {CodeKind::Table, &YAML}},
    {"zig", {CodeKind::Table, &ZIG}},
    {"zsh", {CodeKind::Table, &SHELL}},
};
static_assert(std::is_sorted(std::begin(NAMES), std::end(NAMES),
                             [](const Name& a, const Name& b) { return a.name < b.name; }));

constexpr std::size_t LONGEST_NAME = 32;

} // namespace

KnownLanguage known_language(std::string_view name) {
    if (name.size() > LONGEST_NAME)
        return {};
    std::string small(name);
    for (char& c : small)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
    const auto* const found = std::lower_bound(
        std::begin(NAMES), std::end(NAMES), small,
        [](const Name& each, const std::string& wanted) { return each.name < wanted; });
    return found != std::end(NAMES) && found->name == small ? found->known : KnownLanguage{};
}

} // namespace Lumenfold::Builder
