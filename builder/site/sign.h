#pragma once

#include "builder/files/content_hash.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// A sign of everything that was added to it, in order: equal signs mean equal inputs.
class Sign {
public:
    /// Adds a text, so that neighbouring texts cannot run into one another.
    Sign& add(std::string_view text);
    /// Adds a file's size and time, or that it is missing; its bytes are not read.
    Sign& add_file(const std::filesystem::path& file);
    std::string hex() const;

private:
    ContentHasher hasher_;
};

} // namespace Lumenfold::Builder
