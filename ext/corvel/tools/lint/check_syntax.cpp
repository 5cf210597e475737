#include "checks.h"
#include "layers/lexer.h"
#include "layers/parser.h"
#include "layers/style_folder.h"
#include "text_files.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace CorvelLint {
namespace {

/// How to mend what a message tells of.
struct Remedy {
    std::string_view message; ///< a part of it
    std::string_view help;
};

constexpr std::array<Remedy, 24> REMEDIES{{
    {"Found unexpected character", "texts stand in quotes; names are letters, digits, - and _"},
    {"Found non-terminated string", "end the text with a quote on the same line"},
    {"hex digits; expected", "colours stand in quotes: \"#36393f\""},
    {"indentation mismatch", "indent like a line above, four blanks for each level"},
    {"expected a line end after attribute", "a value is one number, one text or one link, no unit"},
    {"where expression was expected", "write a number, a text in quotes, or a link"},
    {"expected indented attributes", "indent what belongs to it, or take the colon or point away"},
    {"expected line end after layer", "a layer has one base; its body begins with a colon"},
    {"expected reference after", "write the path of a layer, without quotes"},
    {"Expected a name.", "a line begins with the name of a layer or an attribute"},
    {"Expected a name in traversal", "write one slash between two names"},
    {"Expected a name in group", "write the group in front of the point"},
    {"traversal must precede grouping", "write the path in front: `A/Size.Width`"},
    {"invalid traversal in group-set", "write only the name; the path goes in front of the group"},
    {"invalid group in group-set", "write only the name; it has a group already"},
    {"Expected an attribute name", "write the name of an attribute of the group, and a colon"},
    {"after state's state names", "write `@State: value`"},
    {"expected a state name", "write the name of a state behind @ or &"},
    {"expected `:` after state-set", "write `@State:` and indent the values"},
    {"in state-set attribute", "write another block, `@One & Two:`"},
    {"within a state-set", "write another block, `@One & Two:`"},
    {"to close the expansion", "write (A, B)"},
    {"Found expansion in reference", "write one link for each"},
    {"Expected a name in reference", "write the name behind the last slash or point"},
}};

std::string help_for(std::string_view message) {
    for (const Remedy& remedy : REMEDIES)
        if (message.find(remedy.message) != std::string_view::npos)
            return std::string(remedy.help);
    return {};
}

// A diagnostic's text at fault may lie on another line than the one that it names: a line end is
// told on the line behind it.
void add(const Layers::Diagnostic& diagnostic, const std::string& file, const std::string& text,
         Findings& findings) {
    const Place place{file, diagnostic.line};
    if (diagnostic.place.data() == nullptr)
        return findings.add(place, "", diagnostic.message, help_for(diagnostic.message));
    const auto at = static_cast<std::size_t>(diagnostic.place.data() - text.data());
    const std::size_t line_start = at == 0 ? 0 : text.rfind('\n', at - 1) + 1;
    const std::size_t line_end = std::min(text.find('\n', at), text.size());
    findings.add_at(place, at - line_start + 1, std::min(diagnostic.place.size(), line_end - at),
                    diagnostic.message, help_for(diagnostic.message));
}

void check_file(const std::filesystem::path& file, Findings& findings) {
    const std::string text = read_text(file);
    Layers::Lexer lexer(text);
    Layers::Parser parser(lexer);
    parser.parse_file();
    // What the parser says of a file with lexical errors mostly follows from them.
    for (const Layers::Diagnostic& diagnostic :
         lexer.diagnostics().empty() ? parser.diagnostics() : lexer.diagnostics())
        add(diagnostic, file.string(), text, findings);
}

} // namespace

void check_syntax(const Options& options, Findings& findings) {
    for (const auto* folders : {&options.widgets, &options.mounts, &options.styles})
        for (const std::filesystem::path& folder : *folders)
            for (const std::filesystem::path& file : Layers::style_files(folder))
                check_file(file, findings);
}

} // namespace CorvelLint
