#include "app_driver.h"
#include "story_player.h"

namespace TestSupport {
namespace {

struct Stories : testing::TestWithParam<Story> {};

TEST_P(Stories, Play) {
    AppDriver ui;
    play(GetParam(), ui);
}

INSTANTIATE_TEST_SUITE_P(Headless, Stories, testing::ValuesIn(read_stories("stories")), story_name);

} // namespace
} // namespace TestSupport
