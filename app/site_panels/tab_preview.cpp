#include "app/site_panels/tab_preview.h"

#include "app/context/app_context.h"
#include "app/context/window_paths.h"
#include "runtime/corvel_app.h"
#include "site/path_text.h"
#include "site/text_helpers.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <system_error>

namespace Lumenfold {

namespace {

const std::string TABS_ROW = Paths::SITE_CONFIGURATOR +
                             "/Editor Panel/Panels/Website Panel/Main Tab Group/Tab Preview"
                             "/Tabs Row";
const std::string DESKTOP_TAB = TABS_ROW + "/Desktop Column/Tab";
const std::string MOBILE_TAB = TABS_ROW + "/Mobile Column/Tab";

constexpr int DEFAULT_HEIGHT = 25;
constexpr int MAX_HEIGHT = 40;

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}
bool is_letter(char c, char lower) {
    return c == lower || c == lower - 'a' + 'A';
}

/// The number that one to three digits spell; -1 for any other text.
int small_number(std::string_view digits) {
    if (digits.empty() || digits.size() > 3 || !std::all_of(digits.begin(), digits.end(), is_digit))
        return -1;
    int number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

void show_tab_preview(Corvel::CorvelApp& app, const std::string& tab, const std::string& logo,
                      int height, const std::string& text) {
    const bool with_logo = !logo.empty() && height >= 1;
    app.set_visible(tab + "/Logo", with_logo);
    if (with_logo)
        app.set_source(tab + "/Logo", logo);
    if (with_logo || height <= 0)
        app.set_height(tab + "/Logo", std::max(height, 0));
    app.set_visible(tab + "/Text", !text.empty());
    if (!text.empty())
        app.set_text(tab + "/Text", text);
}

} // namespace

bool is_valid_height(std::string_view text) {
    if (text.empty())
        return true;
    const auto unit = std::find_if_not(text.begin(), text.end(), is_digit);
    const auto digits = static_cast<std::size_t>(unit - text.begin());
    const int number = small_number(text.substr(0, digits));
    const std::string_view rest = text.substr(digits);
    const bool known_unit =
        rest.empty() || (is_letter(rest[0], 'p') &&
                         (rest.size() == 1 || (rest.size() == 2 && is_letter(rest[1], 'x'))));
    return number >= 0 && number <= MAX_HEIGHT && known_unit;
}

int parse_height(std::string_view text, int fallback) {
    std::string value = trim(text);
    const std::size_t size = value.size();
    if (size >= 2 && is_letter(value[size - 2], 'p') && is_letter(value[size - 1], 'x'))
        value.resize(size - 2);
    const int number = small_number(value);
    return number < 0 ? fallback : number;
}

void update_tab_preview(const Context& context) {
    const PreviewState& preview = context->site.preview;
    const int desktop = parse_height(preview.logo_height, DEFAULT_HEIGHT);
    const int mobile = preview.logo_height_mobile.empty()
                           ? desktop
                           : parse_height(preview.logo_height_mobile, desktop);
    std::error_code error;
    const bool with_logo = !preview.logo_path.empty() &&
                           std::filesystem::exists(path_from_utf8(preview.logo_path), error);
    const std::string logo = with_logo ? preview.logo_path : std::string();
    std::string text = preview.tab_text;
    if (text.empty() && !with_logo)
        text = "—";
    show_tab_preview(context->app, DESKTOP_TAB, logo, desktop, text);
    show_tab_preview(context->app, MOBILE_TAB, logo, mobile, text);
}

} // namespace Lumenfold
