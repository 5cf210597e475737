// Plays the files of a folder, each story with the whole application on a folder of its own. "== "
// opens a story; a line is a step: a verb and what it needs, "NODE = TEXT" for most. An indented
// line continues the last one. `DIR` is the folder, \n \t \r and \xHH are escapes, \*9X stands for
// nine X, and an expected text that ends in "…" is the start of the real one. A story with lines
// "given" is played once for each; $1 $2 ... are its parts, which "|" separates. No message or
// question may be left at the end.
#pragma once

#include "support/story_line.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace TestSupport {

class AppDriver;

struct Story {
    std::string name;
    std::string given;
    std::vector<StoryLine> lines;
};

std::vector<Story> read_stories(const std::string& folder);
void play(const Story& story, AppDriver& ui);
/// As the framework wants it of a test's name.
std::string story_name(const testing::TestParamInfo<Story>& story);

} // namespace TestSupport
