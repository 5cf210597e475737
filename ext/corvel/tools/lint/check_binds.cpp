#include "checks.h"
#include "runtime/binds.h"

namespace CorvelLint {
namespace {

using Corvel::BindKind;
using Corvel::BindPiece;

bool needs_key(BindKind kind) {
    return kind > BindKind::ThemePublisher;
}

// Empty if the piece has a known form, otherwise what is wrong with it.
std::string fault_of(std::string_view piece) {
    const std::vector<BindPiece> pieces = Corvel::parse_binds(piece).pieces;
    if (pieces.empty())
        return "has no known form";
    const BindPiece& parsed = pieces.front();
    if (needs_key(parsed.kind) && parsed.key.empty())
        return "names no field";
    if (parsed.kind == BindKind::State && parsed.state.empty())
        return "names no state";
    return {};
}

void check_bind(const std::string& text, const Place& place, Findings& findings) {
    const Corvel::Binds whole = Corvel::parse_binds(text);
    if (whole.mode == Corvel::ChildMode::Rows && whole.list_key.empty())
        findings.add(place, "Bind `" + text + "` names no list");
    if (whole.mode != Corvel::ChildMode::Layers)
        return;
    for (const std::string_view piece : Corvel::split_binds(text)) {
        const bool is_whole_only = piece == "ThemeList" || piece.starts_with("List:");
        const std::string fault = is_whole_only ? "must stand alone" : fault_of(piece);
        if (!fault.empty())
            findings.add(place, "Bind piece `" + std::string(piece) + "` " + fault);
    }
}

} // namespace

void check_binds(const StyleTree& tree, Findings& findings) {
    tree.for_each_layer([&](const Layers::LLayer& layer) {
        StyleTree::for_each_variant(layer, "Bind", [&](const Layers::LAttribute& attribute) {
            const Layers::LAttribute& end = terminal_attribute(attribute);
            if (const std::string* const text = std::get_if<std::string>(&end.value()))
                check_bind(*text, tree.place_of(end), findings);
        });
    });
}

} // namespace CorvelLint
