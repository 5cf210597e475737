#include "builder/documents/highlight/characters.h"
#include "builder/documents/highlight/scanners.h"

namespace Lumenfold::Builder {
namespace {

/// Calls `line` with each line, its line feed included.
template <typename Line>
void for_each_line(std::string_view code, Line line) {
    while (!code.empty()) {
        const std::size_t end = std::min(line_end(code, 0) + 1, code.size());
        line(code.substr(0, end));
        code.remove_prefix(end);
    }
}

/// Writes a line as one part, its line feed behind it.
void write_line(CodePart part, std::string_view line, Highlighted& out) {
    const std::size_t end = line_end(line, 0);
    out.part(part, line.substr(0, end));
    out.plain(line.substr(end));
}

bool begins_with_any(std::string_view line, std::initializer_list<std::string_view> beginnings) {
    return std::any_of(beginnings.begin(), beginnings.end(),
                       [&](std::string_view beginning) { return line.starts_with(beginning); });
}

void write_markdown_line(std::string_view line, Highlighted& out) {
    const std::size_t text = skip(line, 0, is_blank);
    const std::size_t marks = skip(line, text, [](char c) { return c == '#'; });
    if (marks > text && marks < line.size() && line[marks] == ' ') {
        write_line(CodePart::Keyword, line, out);
        return;
    }
    if (begins_with_any(line.substr(text), {">"})) {
        write_line(CodePart::Comment, line, out);
        return;
    }
    std::size_t at = text;
    out.plain(line.substr(0, text));
    if (begins_with_any(line.substr(text), {"- ", "* ", "+ "})) {
        out.part(CodePart::Meta, line.substr(text, 1));
        ++at;
    }
    while (at < line.size()) {
        const std::size_t tick = std::min(line.find('`', at), line.size());
        out.plain(line.substr(at, tick - at));
        const std::size_t end = tick < line.size() ? line.find('`', tick + 1) : line.size();
        at = end < line.size() ? end + 1 : line.size();
        if (end < line.size())
            out.part(CodePart::String, line.substr(tick, at - tick));
        else
            out.plain(line.substr(tick));
    }
}

} // namespace

void highlight_difference(std::string_view code, Highlighted& out) {
    for_each_line(code, [&](std::string_view line) {
        if (begins_with_any(line, {"+++", "---", "@@", "diff ", "index ", "Index: ", "===", "new ",
                                   "deleted ", "rename ", "similarity "}))
            write_line(CodePart::Meta, line, out);
        else if (line.starts_with('+') || line.starts_with('>'))
            write_line(CodePart::Inserted, line, out);
        else if (line.starts_with('-') || line.starts_with('<'))
            write_line(CodePart::Deleted, line, out);
        else
            out.plain(line);
    });
}

void highlight_session(std::string_view code, const Language& shell, Highlighted& out) {
    bool continues = false;
    for_each_line(code, [&](std::string_view line) {
        const bool prompt = begins_with_any(line, {"$ ", "# ", "% ", "> "});
        if (prompt)
            out.part(CodePart::Meta, line.substr(0, 1));
        if (prompt || continues)
            highlight_table(line.substr(prompt ? 1 : 0), shell, out);
        else
            out.plain(line);
        continues = (prompt || continues) && line.ends_with("\\\n");
    });
}

void highlight_markdown(std::string_view code, Highlighted& out) {
    bool fenced = false;
    for_each_line(code, [&](std::string_view line) {
        const bool fence = begins_with_any(line.substr(skip(line, 0, is_blank)), {"```", "~~~"});
        if (fence)
            write_line(CodePart::Meta, line, out);
        else if (fenced)
            write_line(CodePart::String, line, out);
        else
            write_markdown_line(line, out);
        fenced = fenced != fence;
    });
}

} // namespace Lumenfold::Builder
