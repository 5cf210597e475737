#include "checks.h"
#include "runtime/binds.h"
#include "suggestions.h"

#include <algorithm>

namespace CorvelLint {
namespace {

using Corvel::BindKind;
using Corvel::BindPiece;

constexpr const char* FORMS =
    "Field:, State:, Placeholder:, Href:, MaxWidth:, Aspect:, Indent:, Grow:, Opacity:, List:, "
    "ThemeList, ThemeName, ThemePublisher, ActiveThemeName, ActiveThemePublisher";

bool needs_key(BindKind kind) {
    return kind > BindKind::ThemePublisher;
}

/// What is wrong with a piece, and the remedy.
struct Fault {
    std::string what;
    std::string help;
};

Fault unknown_form(std::string_view piece) {
    const std::size_t colon = piece.find(':');
    const std::string word(piece.substr(0, colon == piece.npos ? colon : colon + 1));
    if (word == "State:")
        return {"has no known form", "write \"State:Word:key\""};
    const std::string near = nearest(word, split_words(FORMS));
    const std::string rest(piece.substr(word.size()));
    return {"has no known form", near.empty() ? "pieces begin with " + in_words(split_words(FORMS))
                                              : "did you mean `" + near + rest + "`?"};
}

// Nothing if the piece has a known form.
Fault fault_of(std::string_view piece) {
    if (piece == "ThemeList" || piece.starts_with("List:"))
        return {"must stand alone", "put the other pieces on a node around, or on the rows"};
    const std::vector<BindPiece> pieces = Corvel::parse_binds(piece).pieces;
    if (pieces.empty())
        return unknown_form(piece);
    const BindPiece& parsed = pieces.front();
    if (needs_key(parsed.kind) && parsed.key.empty())
        return {"names no field", "write the key behind the colon"};
    if (parsed.kind == BindKind::State && parsed.state.empty())
        return {"names no state", "write \"State:Word:key\""};
    return {};
}

class BindChecker {
public:
    BindChecker(const Options& options, Findings& findings)
        : lists_(options.lists)
        , findings_(findings) {}

    void check(const std::string& text, const Place& place) {
        const Corvel::Binds whole = Corvel::parse_binds(text);
        if (whole.mode == Corvel::ChildMode::Rows)
            return check_list(text, whole.list_key, place);
        if (whole.mode != Corvel::ChildMode::Layers)
            return;
        for (const std::string_view piece : Corvel::split_binds(text))
            if (const Fault fault = fault_of(piece); !fault.what.empty())
                findings_.add(place, piece, "Bind piece `" + std::string(piece) + "` " + fault.what,
                              fault.help);
    }

private:
    void check_list(const std::string& text, const std::string& key, const Place& place) {
        if (key.empty())
            findings_.add(place, text, "Bind `" + text + "` names no list",
                          "write the list's key behind the colon");
        else if (!lists_.empty() && std::find(lists_.begin(), lists_.end(), key) == lists_.end())
            findings_.add(place, key, "the application fills no list `" + key + "`",
                          did_you_mean(key, lists_));
    }

    const std::vector<std::string>& lists_;
    Findings& findings_;
};

} // namespace

void check_binds(const StyleTree& tree, const Options& options, Findings& findings) {
    BindChecker checker(options, findings);
    tree.for_each_layer([&](const Layers::LLayer& layer) {
        StyleTree::for_each_variant(layer, "Bind", [&](const Layers::LAttribute& attribute) {
            const Layers::LAttribute& end = attribute.terminal();
            const std::string* const text = std::get_if<std::string>(&end.value());
            if (text != nullptr && tree.is_declared(end))
                checker.check(*text, tree.place_of(end));
        });
    });
}

} // namespace CorvelLint
