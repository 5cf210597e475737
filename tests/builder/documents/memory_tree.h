#pragma once

#include "builder/repository/source_tree.h"

#include <map>
#include <string>

namespace Lumenfold::Builder {

/// A source tree that a test case writes down:
///
///     @ guides/units.md        a file; its text is what follows
///     @png logo.png 40x20      a picture
///     @link a.png, @submodule vendor
///     @prefix sources/gauge/   where the source folder lies in its repository
class MemoryTree final : public SourceTree {
public:
    explicit MemoryTree(const std::string& script);

    EntryKind kind(std::string_view path) const override;
    std::optional<std::string> read(std::string_view path) const override;
    std::vector<std::string> names(std::string_view folder) const override;
    std::string identity(std::string_view path) const override;
    std::string prefix() const override { return prefix_; }

private:
    struct Entry {
        EntryKind kind = EntryKind::File;
        std::string bytes;
    };

    std::map<std::string, Entry, std::less<>> entries_;
    std::string prefix_;
};

} // namespace Lumenfold::Builder
