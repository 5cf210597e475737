#pragma once

#include <string>
#include <variant>

namespace Layers {

/// The value of an attribute: none, a number, a boolean or a string, in this order. Colours are
/// strings of the form "#rrggbbaa". Values are equal when their kinds and payloads are.
using AttributeValue = std::variant<std::monostate, double, bool, std::string>;

} // namespace Layers
