#include "builder/documents/document.h"
#include "builder/documents/highlight/scanners.h"

namespace Lumenfold::Builder {

std::string highlight_code(std::string_view code, std::string_view language) {
    const KnownLanguage known = known_language(language);
    Highlighted out;
    out.reserve(code.size() * (known.kind == CodeKind::Unknown ? 1 : 3) + 16);
    switch (known.kind) {
    case CodeKind::Unknown:
        out.plain(code);
        break;
    case CodeKind::Table:
        highlight_table(code, *known.language, out);
        break;
    case CodeKind::Markup:
        highlight_markup(code, out);
        break;
    case CodeKind::StyleSheet:
        highlight_style_sheet(code, out);
        break;
    case CodeKind::Difference:
        highlight_difference(code, out);
        break;
    case CodeKind::Session:
        highlight_session(code, *known.language, out);
        break;
    case CodeKind::Markdown:
        highlight_markdown(code, out);
        break;
    }
    return out.take();
}

} // namespace Lumenfold::Builder
