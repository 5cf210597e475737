#include "builder/output/output_list.h"

#include <gtest/gtest.h>

namespace Lumenfold::Builder {
namespace {

OutputList sample() {
    const ContentHash hash = hash_of("bytes");
    OutputList list;
    list.folders = {"gauge", "gauge/topics"};
    list.units = {{"gauge/core", hex_of(hash), hex_of(hash), {}}, {"the site", "", "", {}}};
    list.units[0].files = {{"gauge/a b.html", FileStamp{12, 1771146764123456789}, hash, false},
                           {"gauge/é.html", std::nullopt, {}, false}};
    return list;
}

TEST(OutputLists, ComeBackAsTheyWere) {
    OutputList read;
    ASSERT_EQ(parse_list(list_text(sample()), read), ListState::Good);
    EXPECT_EQ(list_text(read), list_text(sample()));
    EXPECT_EQ(read.units[0].files[0].stamp, (FileStamp{12, 1771146764123456789}));
    EXPECT_FALSE(read.units[0].files[1].stamp);
    EXPECT_EQ(read.units[1].name, "the site");
}

/// Cut anywhere, or with any byte changed, a list is none: it decides what may be deleted.
TEST(OutputLists, AreWholeOrDamaged) {
    const std::string text = list_text(sample());
    for (std::size_t i = 0; i < text.size(); ++i) {
        OutputList read;
        EXPECT_NE(parse_list(text.substr(0, i), read), ListState::Good) << i;
        std::string changed = text;
        changed[i] = changed[i] == '1' ? '2' : '1';
        EXPECT_NE(parse_list(changed, read), ListState::Good) << i;
    }
}

} // namespace
} // namespace Lumenfold::Builder
