#include "layers/literal_pool.h"

#include "layers/shared_name.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

namespace Layers {
namespace {

std::string color_text(const Color& color) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "#%02x%02x%02x%02x", color.red, color.green, color.blue,
                  color.alpha);
    return text.data();
}

std::uint32_t hash_number(double number) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    bits *= 0x9E3779B97F4A7C15;
    return static_cast<std::uint32_t>(bits >> 32);
}

} // namespace

SharedValue LiteralPool::share(const LiteralValue& literal) {
    const auto place = [this](std::uint32_t hash) -> SharedValue& {
        return recent_[hash % recent_.size()];
    };
    if (const auto* number = std::get_if<double>(&literal)) {
        SharedValue& recent = place(hash_number(*number));
        const auto* known = std::get_if<double>(&recent.get());
        if (known == nullptr || std::memcmp(known, number, sizeof *number) != 0)
            recent = SharedValue(*number);
        return recent;
    }
    if (const auto* text = std::get_if<std::string_view>(&literal)) {
        SharedValue& recent = place(hash_name(*text));
        const auto* known = std::get_if<std::string>(&recent.get());
        if (known == nullptr || *known != *text)
            recent = SharedValue(std::string(*text));
        return recent;
    }
    if (const auto* flag = std::get_if<bool>(&literal))
        return SharedValue(*flag);
    if (const auto* color = std::get_if<Color>(&literal))
        return SharedValue(color_text(*color));
    return {};
}

} // namespace Layers
