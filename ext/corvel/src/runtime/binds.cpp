#include "runtime/binds.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <utility>

namespace Corvel {
namespace {

constexpr std::string_view WHITE_SPACE = " \t\n\v\f\r";

constexpr std::array<std::pair<std::string_view, BindKind>, 4> THEME_PIECES = {{
    {"ActiveThemeName", BindKind::ActiveThemeName},
    {"ActiveThemePublisher", BindKind::ActiveThemePublisher},
    {"ThemeName", BindKind::ThemeName},
    {"ThemePublisher", BindKind::ThemePublisher},
}};

constexpr std::array<std::pair<std::string_view, BindKind>, 9> KEYED_PIECES = {{
    {"Field:", BindKind::Field},
    {"State:", BindKind::State},
    {"Href:", BindKind::Href},
    {"MaxWidth:", BindKind::MaxWidth},
    {"Aspect:", BindKind::Aspect},
    {"Indent:", BindKind::Indent},
    {"Grow:", BindKind::Grow},
    {"Placeholder:", BindKind::Placeholder},
    {"Opacity:", BindKind::Opacity},
}};

std::string_view trimmed(std::string_view text) {
    std::size_t first = text.find_first_not_of(WHITE_SPACE);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(WHITE_SPACE) - first + 1);
}

std::optional<BindPiece> parse_piece(std::string_view piece) {
    for (const auto& [name, kind] : THEME_PIECES) {
        if (piece == name)
            return BindPiece{kind, {}, {}};
    }
    for (const auto& [prefix, kind] : KEYED_PIECES) {
        if (!piece.starts_with(prefix))
            continue;
        std::string_view rest = piece.substr(prefix.size());
        if (kind != BindKind::State)
            return BindPiece{kind, std::string(rest), {}};
        std::size_t colon = rest.find(':');
        if (colon == std::string_view::npos)
            return std::nullopt;
        return BindPiece{kind, std::string(rest.substr(colon + 1)),
                         std::string(rest.substr(0, colon))};
    }
    return std::nullopt;
}

} // namespace

std::vector<std::string_view> split_binds(std::string_view text) {
    std::vector<std::string_view> pieces;
    while (!text.empty()) {
        std::size_t end = text.find(';');
        std::string_view piece = trimmed(text.substr(0, end));
        if (!piece.empty())
            pieces.push_back(piece);
        if (end == std::string_view::npos)
            break;
        text.remove_prefix(end + 1);
    }
    return pieces;
}

Binds parse_binds(std::string_view text) {
    constexpr std::string_view list_prefix = "List:";
    Binds binds;
    if (text == "ThemeList") {
        binds.mode = ChildMode::Themes;
    } else if (text.starts_with(list_prefix)) {
        binds.mode = ChildMode::Rows;
        binds.list_key = text.substr(list_prefix.size());
    }
    for (std::string_view piece : split_binds(text)) {
        if (std::optional<BindPiece> parsed = parse_piece(piece)) {
            binds.has_states = binds.has_states || parsed->kind == BindKind::State;
            binds.pieces.push_back(*std::move(parsed));
        }
    }
    return binds;
}

std::optional<double> leading_number(const std::string& text) {
    errno = 0;
    char* end = nullptr;
    double number = std::strtod(text.c_str(), &end);
    if (end == text.c_str() || errno == ERANGE)
        return std::nullopt;
    return number;
}

bool is_switched_on(std::string_view value) {
    return !value.empty() && value != "0" && value != "false";
}

} // namespace Corvel
