// The scanners stand in for regular expressions, on which std::regex would overflow the stack. On
// small inputs both must find the same.

#include "svg/affine.h"
#include "svg/css_scanner.h"
#include "svg/svg_path.h"
#include "svg/svg_values.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <regex>

namespace {

using namespace Corvel::Svg;
using Matches = std::vector<std::string>;

template <class... Groups>
std::string match(std::size_t begin, std::size_t end, const Groups&... groups) {
    std::string text = std::to_string(begin) + '+' + std::to_string(end - begin) + '|';
    ((text += groups, text += '|'), ...);
    return text;
}

/// Compares `scan` with `pattern` on texts put together from `pieces`, which `tail` closes. A match
/// is written as position, length and groups.
void expect_like_regex(const char* pattern, const Matches& pieces, const std::string& tail,
                       const std::function<Matches(const std::string&)>& scan) {
    const std::regex regex(pattern);
    std::mt19937 random(1);
    for (int round = 0; round < 5'000; ++round) {
        std::string text;
        for (auto count = random() % 14; count > 0; --count)
            text += pieces[random() % pieces.size()];
        text += tail;
        Matches expected;
        for (std::sregex_iterator it(text.begin(), text.end(), regex), end; it != end; ++it) {
            const auto begin = static_cast<std::size_t>(it->position());
            expected.push_back(match(begin, begin + it->str().size()));
            for (std::size_t group = 1; group < it->size(); ++group)
                expected.back() += it->str(group) + '|';
        }
        ASSERT_EQ(scan(text), expected) << text;
    }
}

TEST(Pattern, Rules) {
    expect_like_regex("([^{}]+)\\{([^{}]*)\\}", {"{", "}", "{", "}", "a", " ", "b:c;", "{}", "\n"},
                      "", [](const std::string& text) {
                          Matches found;
                          for (const CssRule& rule : scan_rules(text))
                              found.push_back(match(rule.begin, rule.end, rule.prelude, rule.body));
                          return found;
                      });
}

TEST(Pattern, Keyframes) {
    expect_like_regex("@(?:-webkit-)?keyframes\\s+([A-Za-z_][\\w-]*)\\s*\\{",
                      {"@", "-webkit-", "keyframes", "@keyframes ", "@-webkit-keyframes\t", "a",
                       "_b-1", "1", "-", " ", "\v\n", "{", "{", "x\xc3\xa4"},
                      std::string(14, '}'), // keeps every block
                      [](const std::string& text) {
                          Matches found;
                          for (const CssKeyframes& block : scan_keyframes(text))
                              found.push_back(match(block.begin, block.body_begin, block.name));
                          return found;
                      });
}

TEST(Pattern, Transforms) {
    expect_like_regex(
        "(matrix|translate|scale|rotate)\\s*\\(([^)]*)\\)",
        {"matrix", "translate", "scale", "rotate", "rot", "X", "(", "(1 2", ")", ")", " ", "\f",
         "3"},
        "", [](const std::string& text) {
            Matches found;
            TransformCall call;
            for (std::size_t position = 0; next_transform_call(text, position, call);) {
                const auto begin = static_cast<std::size_t>(call.name.data() - text.data());
                found.push_back(match(begin, position, call.name, call.arguments));
            }
            return found;
        });
}

TEST(Pattern, PathTokens) {
    expect_like_regex("[MmLlHhVvCcQqZz]|-?\\d*\\.?\\d+(?:[eE][-+]?\\d+)?",
                      {"M", "z", "S", "a", "-", ".", ".", "1", "23", "e", "E+", "e-4", " ", ","},
                      "", [](const std::string& text) {
                          Matches found;
                          std::size_t position = 0;
                          for (auto token = next_path_token(text, position); !token.empty();
                               token = next_path_token(text, position))
                              found.push_back(match(position - token.size(), position));
                          return found;
                      });
}

TEST(Pattern, Times) {
    expect_like_regex("^\\d*\\.?\\d+(?:ms|s)$", {"1", "20", ".", "s", "ms", "m", "-", "e1"}, "",
                      [](const std::string& text) {
                          return is_css_time(text) ? Matches{match(0, text.size())} : Matches{};
                      });
}

} // namespace
