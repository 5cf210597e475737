#include "update/update_check.h"

#include <gtest/gtest.h>

#include <vector>

namespace Corvel {
namespace {

int sign(int value) {
    return (value > 0) - (value < 0);
}

struct VersionPair {
    const char* a;
    char order; ///< '<', '=' or '>'
    const char* b;
};

// clang-format off
constexpr VersionPair pairs[] = {
    // Numbers, not texts; missing parts are 0.
    {"1.10.0", '>', "1.9.9"}, {"1.9", '<', "1.10"}, {"2", '>', "1.99.99"}, {"0.0.1", '>', "0"},
    {"1.2", '=', "1.2.0"}, {"1", '=', "1.0.0.0"}, {"1.2.0.1", '>', "1.2"}, {"01.2", '=', "1.02"},
    {"10", '>', "9"}, {"1.0.0", '=', "1.0.0"}, {"1.0.1", '>', "1.0.0"}, {"0.9.9", '<', "1.0"},
    {"1.2.3", '<', "1.2.4"}, {"1.3.0", '>', "1.2.9"}, {"3.0", '>', "2.9.9.9"},
    // A part that is no number counts as 0.
    {"2x.1", '=', "0.1"}, {"1.x", '=', "1"}, {"1..2", '=', "1.0.2"}, {"", '=', "0"}, {"abc", '=', "0.0"},
    {"1.2x", '<', "1.1"}, {".1", '=', "0.1"}, {"1.", '=', "1"}, {"1. 2", '=', "1.0"},
    // Numbers that do not fit.
    {"99999999999", '>', "1"}, {"99999999999", '=', "88888888888"}, {"2147483647", '>', "2147483646"},
    {"1.99999999999999999999999", '>', "1.5"},
    // One leading letter and what follows a plus sign do not count.
    {"v2.0.0", '=', "2.0.0"}, {"V2", '=', "v2"}, {"vv2", '<', "1"}, {"2.0.0+abc", '=', "2.0.0"},
    {"2.0.0+1", '=', "2.0.0+2"}, {"+3", '=', "0"}, {"2.0.0+a-b", '=', "2.0.0"},
    {"2.0.0-rc.1+5", '=', "v2.0.0-rc.1"}, {"v", '=', "0"},
    // A release is newer than what leads to it.
    {"2.0.0-beta", '<', "2.0.0"}, {"2.0.0", '>', "2.0.0-rc.9"}, {"2.0.0-beta", '>', "1.9.9"},
    {"2.0.0-", '=', "2.0.0"}, {"2.0.1-alpha", '>', "2.0.0"}, {"2-0", '<', "2"},
    // Parts of pre-releases: numbers by value, others by bytes, numbers first.
    {"2.0.0-beta.2", '<', "2.0.0-beta.10"}, {"2.0.0-1", '<', "2.0.0-alpha"},
    {"2.0.0-alpha", '<', "2.0.0-alpha.1"}, {"2.0.0-alpha.1", '<', "2.0.0-alpha.beta"},
    {"2.0.0-alpha.beta", '<', "2.0.0-beta"}, {"2.0.0-beta", '<', "2.0.0-beta.2"},
    {"2.0.0-beta.11", '<', "2.0.0-rc.1"}, {"2.0.0-rc.1", '<', "2.0.0"},
    {"2.0.0-2", '<', "2.0.0-10"}, {"2.0.0-02", '=', "2.0.0-2"}, {"2.0.0-B", '<', "2.0.0-a"},
    {"2.0.0-alpha", '<', "2.0.0-alphabet"}, {"2.0.0-rc1", '>', "2.0.0-rc-1"},
    {"2.0.0-beta-2", '>', "2.0.0-beta"}, {"2.0.0-a.b.c", '>', "2.0.0-a.b"}, {"2.0.0-a", '=', "2-a"},
    {"2.0.0-a..b", '<', "2.0.0-a.a"}, {"2.0.0-a.", '>', "2.0.0-a"}, {"2.0.0-1.2", '<', "2.0.0-1.2x"},
    {"2.0.0-20240601120000", '<', "2.0.0-20240601120001"},
    {"2.0.0-99999999999999999999", '>', "2.0.0-9999999999"},
};
// clang-format on

TEST(CompareVersions, OrdersEachPairBothWays) {
    static_assert(std::size(pairs) >= 60);
    for (const VersionPair& pair : pairs) {
        const int expected = pair.order == '<' ? -1 : pair.order == '>' ? 1 : 0;
        EXPECT_EQ(sign(compare_versions(pair.a, pair.b)), expected) << pair.a << ' ' << pair.b;
        EXPECT_EQ(sign(compare_versions(pair.b, pair.a)), -expected) << pair.b << ' ' << pair.a;
    }
}

TEST(CompareVersions, IsTransitive) {
    std::vector<const char*> versions;
    for (std::size_t i = 0; i < std::size(pairs); i += 2)
        versions.push_back(pairs[i].a);
    for (const char* x : versions)
        for (const char* y : versions)
            for (const char* z : versions) {
                const bool ascending = compare_versions(x, y) <= 0 && compare_versions(y, z) <= 0;
                ASSERT_FALSE(ascending && compare_versions(x, z) > 0) << x << ' ' << y << ' ' << z;
            }
}

} // namespace
} // namespace Corvel
