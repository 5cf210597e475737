#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

// What files of cases and of stories have in common; docs/testing.md tells how they are written.

namespace TestSupport {

/// A line of such a file.
struct StoryLine {
    std::string file;
    int number = 0;
    std::string text;
};

/// Characters that would not be seen, and the pictures that stand for them in files and failures.
inline const std::array<std::pair<std::string, std::string>, 5>& pictures() {
    static const std::array<std::pair<std::string, std::string>, 5> all{
        {{"␉", "\t"},
         {"␍", "\r"},
         {"␀", std::string(1, '\0')},
         {"␠", " "},
         {"[BOM]", "\xEF\xBB\xBF"}}};
    return all;
}

inline std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

/// The real text of one in a file; ␄ at the end of a line takes the line end with it.
inline std::string without_pictures(std::string text) {
    text = replaced(std::move(text), "␄\n", "");
    for (const auto& [picture, meaning] : pictures())
        text = replaced(std::move(text), picture, meaning);
    return text;
}

/// A value as a failure shows it: on the line if it is one line, else as a block.
inline std::string readable(std::string value) {
    for (const auto& [picture, meaning] : pictures())
        if (meaning != " ")
            value = replaced(std::move(value), meaning, picture);
    if (value.ends_with(' '))
        value.replace(value.size() - 1, 1, "␠");
    return value.find('\n') == std::string::npos ? value
                                                 : "\n    | " + replaced(value, "\n", "\n    | ");
}

/// Fails with "file:line: " first.
inline void fail_at(const StoryLine& line, const std::string& words) {
    GTEST_MESSAGE_AT_(line.file.c_str(), line.number, words.c_str(),
                      testing::TestPartResult::kNonFatalFailure)
        << "in: " << line.text;
}

/// Fails with both values, and of long ones with the first line in which they differ.
inline void expect_at(const StoryLine& line, const std::string& actual,
                      const std::string& expected) {
    if (actual == expected)
        return;
    std::string words = "expected: " + readable(expected) + "\n  actual: " + readable(actual);
    std::istringstream a(actual), e(expected);
    std::string left, right;
    int number = 1;
    while (std::getline(e, right) && std::getline(a, left) && left == right)
        ++number;
    if (number > 1)
        words += "\nfirst difference in line " + std::to_string(number);
    fail_at(line, words);
}

/// The entry of a table of verbs. An unknown verb is told with those that begin like it, or all.
template <class Verbs>
const typename Verbs::mapped_type& verb_of(const Verbs& verbs, const std::string& name) {
    if (const auto found = verbs.find(name); found != verbs.end())
        return found->second;
    std::string near, all;
    for (const auto& [known, action] : verbs) {
        all += " " + known;
        if (!name.empty() && known.front() == name.front())
            near += " " + known;
    }
    throw std::invalid_argument("no verb \"" + name + "\"; there is" + (near.empty() ? all : near));
}

/// A title as a name that the test framework takes.
inline std::string test_name(std::string title) {
    std::replace_if(
        title.begin(), title.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
    return title;
}

/// Registers `body` as a test of its own, so that it can be run and is told by its title. For
/// namespace scope: `const bool registered = ...`.
template <class Body>
void register_test(const std::string& suite, const std::string& title, const StoryLine& line,
                   Body body) {
    class Registered : public testing::Test {
    public:
        explicit Registered(Body test_body)
            : body_(std::move(test_body)) {}
        void TestBody() override { body_(); }

    private:
        Body body_;
    };
    testing::RegisterTest(suite.c_str(), test_name(title).c_str(), nullptr, nullptr,
                          line.file.c_str(), line.number,
                          [body]() -> testing::Test* { return new Registered(body); });
}

} // namespace TestSupport
