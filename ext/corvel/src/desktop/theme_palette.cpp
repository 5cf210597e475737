#include "desktop/theme_palette.h"

#include "desktop/desktop_view_p.h"
#include "desktop/widgets/painting.h"
#include "desktop/widgets/root_container.h"
#include "runtime/corvel_app.h"

#include <QApplication>
#include <QPalette>
#include <QToolTip>

namespace Corvel {

namespace {

constexpr double SELECTION = 0.25; ///< share of the text colour in a selection's background
constexpr double DISABLED = 0.4;   ///< and in a text that is disabled
constexpr double HINT = 0.5;       ///< and in a placeholder

QColor mixed(const QColor& over, const QColor& under, double share) {
    const auto part = [share](int a, int b) { return qRound(a * share + b * (1 - share)); };
    return {part(over.red(), under.red()), part(over.green(), under.green()),
            part(over.blue(), under.blue())};
}

void set_texts(QPalette& palette, QPalette::ColorGroup group, const QColor& color) {
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::BrightText,
          QPalette::HighlightedText, QPalette::ToolTipText})
        palette.setColor(group, role, color);
}

QPalette palette_of(const ThemeColors& theme) {
    const QColor window = color_of(theme.primary);
    const QColor button = color_of(theme.secondary);
    const QColor base = color_of(theme.tertiary);
    const QColor words = color_of(theme.foreground);
    const QPalette old = QApplication::palette();
    QPalette palette(button, window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, button);
    palette.setColor(QPalette::ToolTipBase, button);
    palette.setColor(QPalette::Highlight, mixed(words, base, SELECTION));
    set_texts(palette, QPalette::All, words);
    set_texts(palette, QPalette::Disabled, mixed(words, window, DISABLED));
    palette.setColor(QPalette::PlaceholderText, mixed(words, base, HINT));
    // Rendered Markdown is recognised by the colour that links have in it.
    palette.setColor(QPalette::Link, old.color(QPalette::Link));
    palette.setColor(QPalette::LinkVisited, old.color(QPalette::LinkVisited));
    return palette;
}

bool all_readable(const ThemeColors& theme) {
    for (const std::string* text :
         {&theme.primary, &theme.secondary, &theme.tertiary, &theme.foreground})
        if (!color_of(*text).isValid())
            return false;
    return true;
}

} // namespace

void follow_theme_palette(ViewState& view) {
    const auto entry = view.app->themes().find(view.app->active_theme());
    if (entry == view.app->themes().end())
        return;
    const auto value = [&](const char* key) { return theme_value(entry->second, key); };
    const ThemeColors colors = {value("Primary"), value("Secondary"), value("Tertiary"),
                                value("Foreground")};
    if (colors == view.palette)
        return;
    view.palette = colors;
    if (!all_readable(colors))
        return;
    const QPalette palette = palette_of(colors);
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
}

} // namespace Corvel
