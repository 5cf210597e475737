// The scanners stand in for regular expressions, on which std::regex would overflow the stack. On
// small inputs both must find the same.

#include "svg/affine.h"
#include "svg/css_scanner.h"
#include "svg/svg_path.h"
#include "svg/svg_values.h"

#include <gtest/gtest.h>

#include <random>
#include <regex>
#include <string>
#include <vector>

namespace {

using namespace Corvel::Svg;

constexpr int rounds = 5'000;

/// Texts put together from pieces that the patterns care about.
class TextSource {
public:
    TextSource(unsigned seed, std::vector<std::string> pieces)
        : random_(seed)
        , pieces_(std::move(pieces)) {}

    std::string next() {
        std::string text;
        for (auto count = random_() % 14; count > 0; --count)
            text += pieces_[random_() % pieces_.size()];
        return text;
    }

private:
    std::mt19937 random_;
    std::vector<std::string> pieces_;
};

std::vector<std::string> regex_matches(const std::string& text, const std::regex& pattern) {
    std::vector<std::string> found;
    for (std::sregex_iterator it(text.begin(), text.end(), pattern), end; it != end; ++it) {
        std::string match = std::to_string(it->position()) + '+' + std::to_string(it->length());
        for (std::size_t group = 1; group < it->size(); ++group)
            match += '|' + it->str(group);
        found.push_back(match);
    }
    return found;
}

std::string match(std::size_t begin, std::size_t end) {
    return std::to_string(begin) + '+' + std::to_string(end - begin) + '|';
}

TEST(Pattern, Rules) {
    const std::regex pattern("([^{}]+)\\{([^{}]*)\\}");
    TextSource source(1, {"{", "}", "{", "}", "a", " ", "b:c;", "{}", "\n"});
    for (int i = 0; i < rounds; ++i) {
        const std::string text = source.next();
        std::vector<std::string> found;
        for (const CssRule& rule : scan_rules(text))
            found.push_back(match(rule.begin, rule.end) + std::string(rule.prelude) + '|' +
                            std::string(rule.body));
        ASSERT_EQ(found, regex_matches(text, pattern)) << text;
    }
}

TEST(Pattern, Keyframes) {
    const std::regex pattern("@(?:-webkit-)?keyframes\\s+([A-Za-z_][\\w-]*)\\s*\\{");
    TextSource source(2, {"@", "-webkit-", "keyframes", "@keyframes ", "@-webkit-keyframes\t", "a",
                          "_b-1", "1", "-", " ", "\v\n", "{", "{", "x\xc3\xa4"});
    for (int i = 0; i < rounds; ++i) {
        // Closing braces behind the text keep every block.
        const std::string text = source.next() + std::string(14, '}');
        std::vector<std::string> found;
        for (const CssKeyframes& block : scan_keyframes(text))
            found.push_back(match(block.begin, block.body_begin) + std::string(block.name));
        ASSERT_EQ(found, regex_matches(text, pattern)) << text;
    }
}

TEST(Pattern, Transforms) {
    const std::regex pattern("(matrix|translate|scale|rotate)\\s*\\(([^)]*)\\)");
    TextSource source(3, {"matrix", "translate", "scale", "rotate", "rot", "X", "(", "(1 2", ")",
                          ")", " ", "\f", "3"});
    for (int i = 0; i < rounds; ++i) {
        const std::string text = source.next();
        std::vector<std::string> found;
        TransformCall call;
        for (std::size_t position = 0; next_transform_call(text, position, call);) {
            const auto begin = static_cast<std::size_t>(call.name.data() - text.data());
            found.push_back(match(begin, position) + std::string(call.name) + '|' +
                            std::string(call.arguments));
        }
        ASSERT_EQ(found, regex_matches(text, pattern)) << text;
    }
}

TEST(Pattern, PathTokens) {
    const std::regex pattern("([MmLlHhVvCcQqZz])|(-?\\d*\\.?\\d+(?:[eE][-+]?\\d+)?)");
    TextSource source(4,
                      {"M", "z", "S", "a", "-", ".", ".", "1", "23", "e", "E+", "e-4", " ", ","});
    for (int i = 0; i < rounds; ++i) {
        const std::string text = source.next();
        std::vector<std::string> expected;
        for (std::sregex_iterator it(text.begin(), text.end(), pattern), end; it != end; ++it)
            expected.push_back(it->str());
        std::vector<std::string> found;
        std::size_t position = 0;
        for (auto token = next_path_token(text, position); !token.empty();
             token = next_path_token(text, position))
            found.emplace_back(token);
        ASSERT_EQ(found, expected) << text;
    }
}

TEST(Pattern, Times) {
    const std::regex pattern("^\\d*\\.?\\d+(?:ms|s)$");
    TextSource source(5, {"1", "20", ".", "s", "ms", "m", "-", "e1"});
    for (int i = 0; i < rounds; ++i) {
        const std::string text = source.next();
        ASSERT_EQ(is_css_time(text), std::regex_search(text, pattern)) << text;
    }
}

} // namespace
