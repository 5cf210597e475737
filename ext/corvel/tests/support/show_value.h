#pragma once

#include <sstream>
#include <string>
#include <variant>

namespace TestSupport {

/// A value of a style or theme as one word: texts in quotes, "none" for no value.
template <class Value>
std::string show_value(const Value& value) {
    std::ostringstream text;
    if (const auto* number = std::get_if<double>(&value))
        text << *number;
    else if (const auto* flag = std::get_if<bool>(&value))
        text << (*flag ? "true" : "false");
    else if (const auto* string = std::get_if<std::string>(&value))
        text << '"' << *string << '"';
    else
        text << "none";
    return text.str();
}

} // namespace TestSupport
