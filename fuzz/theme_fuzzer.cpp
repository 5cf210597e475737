// Reads any bytes as a theme file. What is read once is read the same again, and a file that is a
// theme says so by its name.

#include "theme/theme.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view source(reinterpret_cast<const char*>(data), size);
    const auto theme = Corvel::parse_theme_file(source);
    const auto again = Corvel::parse_theme_file(source);
    if (theme.has_value() != again.has_value())
        std::abort();
    if (!theme)
        return 0;
    if (!Corvel::theme_display_name(*theme).starts_with(theme->name) ||
        theme->values.size() != again->values.size())
        std::abort();
    for (const auto& [key, fallback] : Corvel::default_theme())
        Corvel::theme_value(*theme, key);
    return 0;
}
