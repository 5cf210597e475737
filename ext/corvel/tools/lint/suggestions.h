#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace CorvelLint {

/// The candidate that somebody who wrote `word` most likely meant; empty if none is near. Capitals
/// count little.
std::string nearest(std::string_view word, const std::vector<std::string>& candidates);

/// "did you mean `X`?" for the nearest candidate; empty if none is near.
std::string did_you_mean(std::string_view word, const std::vector<std::string>& candidates);

/// Cuts at commas; blanks around the words go.
std::vector<std::string> split_words(std::string_view text);

/// "`A`, `B` or `C`".
std::string in_words(const std::vector<std::string>& words);

} // namespace CorvelLint
