#include "builder/documents/highlight/characters.h"
#include "builder/documents/highlight/scanners.h"

namespace Lumenfold::Builder {
namespace {

bool is_name(char c) {
    return is_word(c) || c == '-' || c == ':' || c == '.';
}

/// Writes what stands between the "<" of a tag, with its name, and the ">"; gives the end.
std::size_t write_attributes(std::string_view code, std::size_t at, Highlighted& out) {
    while (at < code.size() && code[at] != '>' && code[at] != '<') {
        const char c = code[at];
        std::size_t end = at + 1;
        if (c == '"' || c == '\'') {
            end = behind(code, code.substr(at, 1), at + 1);
            out.part(CodePart::String, code.substr(at, end - at));
        } else if (is_name(c)) {
            end = skip(code, at, is_name);
            out.part(CodePart::Variable, code.substr(at, end - at));
        } else {
            out.plain(code.substr(at, 1));
        }
        at = end;
    }
    return at;
}

/// Where an entity ends that begins at `at`; `at` if none does.
std::size_t entity_end(std::string_view code, std::size_t at) {
    const std::size_t end = skip(code, at + 1, [](char c) { return is_word(c) || c == '#'; });
    return end < code.size() && code[end] == ';' && end > at + 1 ? end + 1 : at;
}

} // namespace

void highlight_markup(std::string_view code, Highlighted& out) {
    std::size_t at = 0;
    while (at < code.size()) {
        std::size_t end = std::min(code.find_first_of("<&", at), code.size());
        out.plain(code.substr(at, end - at));
        at = end;
        if (at == code.size())
            break;
        const std::string_view rest = code.substr(at);
        const std::size_t name = rest.starts_with("</") ? 2 : 1;
        if (rest.starts_with("<!--")) {
            end = behind(code, "-->", at + 4);
            out.part(CodePart::Comment, code.substr(at, end - at));
        } else if (rest.starts_with("<!") || rest.starts_with("<?")) {
            end = behind(code, ">", at);
            out.part(CodePart::Meta, code.substr(at, end - at));
        } else if (rest.front() == '<' && name < rest.size() && is_letter(rest[name])) {
            const std::size_t name_end = skip(code, at + name, is_name);
            out.plain(code.substr(at, name));
            out.part(CodePart::Type, code.substr(at + name, name_end - at - name));
            end = write_attributes(code, name_end, out);
        } else if (rest.front() == '&' && entity_end(code, at) > at) {
            end = entity_end(code, at);
            out.part(CodePart::Meta, code.substr(at, end - at));
        } else {
            end = at + 1;
            out.plain(code.substr(at, 1));
        }
        at = end;
    }
}

} // namespace Lumenfold::Builder
