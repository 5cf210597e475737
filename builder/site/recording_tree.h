#pragma once

#include "builder/repository/source_tree.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Lumenfold::Builder {

/// A tree that remembers what was looked at, so that a later build can tell whether any of it
/// changed.
class RecordingTree : public SourceTree {
public:
    explicit RecordingTree(const SourceTree& tree)
        : tree_(tree) {}

    EntryKind kind(std::string_view path) const override {
        record(path);
        return tree_.kind(path);
    }
    std::optional<std::string> read(std::string_view path) const override {
        record(path);
        return tree_.read(path);
    }
    std::vector<std::string> names(std::string_view folder) const override {
        record(folder);
        return tree_.names(folder);
    }
    std::string identity(std::string_view path) const override { return tree_.identity(path); }
    std::string prefix() const override { return tree_.prefix(); }

    /// Every path that was looked at with its identity, in the order of their bytes.
    std::vector<std::pair<std::string, std::string>> looked_at() const {
        return {looked_at_.begin(), looked_at_.end()};
    }

private:
    void record(std::string_view path) const {
        const auto [entry, fresh] = looked_at_.try_emplace(std::string(path));
        if (fresh)
            entry->second = tree_.identity(path);
    }

    const SourceTree& tree_;
    mutable std::map<std::string, std::string> looked_at_;
};

} // namespace Lumenfold::Builder
