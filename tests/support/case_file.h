#pragma once

#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <sstream>
#include <string>
#include <utility>

namespace TestSupport {

/// Characters that would not be seen in a file of cases stand there as their pictures, a byte order
/// mark as [BOM]; ␄ at the end of a text takes the line end with it.
inline std::string without_pictures(std::string text) {
    static const std::array<std::pair<std::string, std::string>, 6> pictures{
        {{"␄\n", ""},
         {"␉", "\t"},
         {"␍", "\r"},
         {"␀", std::string(1, '\0')},
         {"␠", " "},
         {"[BOM]", "\xEF\xBB\xBF"}}};
    for (const auto& [picture, meaning] : pictures)
        for (std::size_t at = 0; (at = text.find(picture, at)) != std::string::npos;
             at += meaning.size())
            text.replace(at, picture.size(), meaning);
    return text;
}

/// Checks that `output` makes of each input in the file `name`, a path inside the checkout, what is
/// expected of it. A case is written so:
///
///     == its name
///     input, any lines
///     --
///     expected, any lines
inline void expect_cases(const std::string& name,
                         const std::function<std::string(const std::string&)>& output) {
    std::istringstream file(read_file(std::filesystem::path(SOURCE_ROOT) / name));
    std::string title;
    std::string input;
    std::string expected;
    std::string* part = nullptr;
    const auto check = [&] {
        if (expected.ends_with("\n\n") || expected == "\n")
            expected.pop_back(); // the blank line before the next case
        if (part != nullptr) {
            EXPECT_EQ(output(without_pictures(input)), without_pictures(expected))
                << name << ": " << title;
        }
        input.clear();
        expected.clear();
    };
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("== ")) {
            check();
            title = line.substr(3);
            part = &input;
        } else if (line == "--" && part == &input) {
            part = &expected;
        } else if (part != nullptr) {
            *part += line + "\n";
        }
    }
    EXPECT_NE(part, nullptr) << "no cases in " << name;
    check();
}

/// The same for cases of one line each, "input => expected". Lines that begin with "# " are
/// remarks.
inline void expect_lines(const std::string& name,
                         const std::function<std::string(const std::string&)>& output) {
    std::istringstream file(read_file(std::filesystem::path(SOURCE_ROOT) / name));
    int cases = 0;
    for (std::string line; std::getline(file, line);) {
        const std::size_t arrow = line.find(" => ");
        if (arrow == std::string::npos || line.starts_with("# "))
            continue;
        ++cases;
        EXPECT_EQ(output(without_pictures(line.substr(0, arrow))),
                  without_pictures(line.substr(arrow + 4)))
            << name << ": " << line;
    }
    EXPECT_GT(cases, 0) << "no cases in " << name;
}

} // namespace TestSupport
