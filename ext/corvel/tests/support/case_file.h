#pragma once

#include "support/story_line.h"
#include "support/temp_dir.h"

#include <functional>
#include <sstream>
#include <string>
#include <vector>

namespace TestSupport {

/// An input and what is to be made of it.
struct Case {
    StoryLine line; ///< of its title, which is the text
    std::string input;
    std::string expected;
};

using Output = std::function<std::string(const std::string& input)>;

/// The cases of a file, a path inside the checkout. A case is written so:
///
///     == its title
///     input, any lines
///     --
///     expected, any lines
inline std::vector<Case> read_cases(const std::string& name) {
    const std::string path = std::string(SOURCE_ROOT) + "/" + name;
    std::istringstream file(read_file(path));
    std::vector<Case> cases;
    std::string* part = nullptr;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (line.starts_with("== ")) {
            cases.push_back({{path, number, line.substr(3)}, {}, {}});
            part = &cases.back().input;
        } else if (line == "--" && part == &cases.back().input) {
            part = &cases.back().expected;
        } else if (part) {
            *part += line + "\n";
        }
    }
    for (Case& one : cases) {
        if (one.expected.ends_with("\n\n") || one.expected == "\n")
            one.expected.pop_back(); // the blank line before the next case
        one.input = without_pictures(one.input);
        one.expected = without_pictures(one.expected);
    }
    return cases;
}

/// The cases of a file with one line for each, "input => expected". Lines that begin with "# " are
/// remarks.
inline std::vector<Case> read_lines(const std::string& name) {
    const std::string path = std::string(SOURCE_ROOT) + "/" + name;
    std::istringstream file(read_file(path));
    std::vector<Case> cases;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        const std::size_t arrow = line.find(" => ");
        if (arrow != std::string::npos && !line.starts_with("# "))
            cases.push_back({{path, number, line},
                             without_pictures(line.substr(0, arrow)),
                             without_pictures(line.substr(arrow + 4))});
    }
    return cases;
}

inline void expect_case(const Case& one, const Output& output) {
    try {
        expect_at(one.line, output(one.input), one.expected);
    } catch (const std::exception& problem) {
        fail_at(one.line, problem.what());
    }
}

/// Checks that `output` makes of each input in a file of cases what is expected of it.
inline void expect_cases(const std::string& name, const Output& output) {
    const std::vector<Case> cases = read_cases(name);
    EXPECT_FALSE(cases.empty()) << "no cases in " << name;
    for (const Case& one : cases)
        expect_case(one, output);
}

inline void expect_lines(const std::string& name, const Output& output) {
    const std::vector<Case> cases = read_lines(name);
    EXPECT_FALSE(cases.empty()) << "no cases in " << name;
    for (const Case& one : cases)
        expect_case(one, output);
}

/// Makes each case of a file a test of its own.
inline bool register_cases(const std::string& suite, const std::string& name,
                           const Output& output) {
    const std::vector<Case> cases = read_cases(name);
    if (cases.empty())
        register_test(suite, "HasCases", {name, 1, ""},
                      [name] { FAIL() << "no cases in " << name; });
    for (const Case& one : cases)
        register_test(suite, one.line.text, one.line, [one, output] { expect_case(one, output); });
    return true;
}

} // namespace TestSupport
