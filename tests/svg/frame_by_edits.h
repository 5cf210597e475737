#pragma once

#include <string>

/// The frame of an animated document by the plainest road: every track writes into maps, every map
/// becomes edits, every edit changes the source. Slow, for comparison.
std::string frame_by_edits(const std::string& source, double ms);
