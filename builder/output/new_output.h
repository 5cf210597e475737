#pragma once

#include "builder/output/old_output.h"

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace Lumenfold::Builder {

/// A file that a claimed unit will have.
struct NewFile {
    std::string path;
    std::string_view unit;
    const ListedFile* old = nullptr; ///< what is there, if it is ours
    std::optional<FileStamp> stamp;  ///< once it was written, or found to have its bytes
    ContentHash hash;
};

struct NewUnit {
    std::string name;
    std::string sign; ///< as a list keeps it
    std::string note;
    std::deque<NewFile> files; ///< which stay where they are in memory
};

/// What a build will leave: the units that it keeps from the one before, and those that it makes.
class NewOutput {
public:
    void keep(const ListedUnit& unit) { kept_.insert(unit.name); }
    bool is_kept(const ListedUnit& unit) const { return kept_.contains(unit.name); }
    /// Whether this is all that was there, and nothing new.
    bool is_the_same_as(const OutputList& old) const;
    std::size_t kept_files(const OutputList& old) const;

    /// Gives a kept unit another note.
    void set_note(const ListedUnit& kept, std::string note);

    NewUnit& add(std::string_view name, std::string sign);
    void add_file(NewUnit& unit, const std::string& path, const ListedFile* old);
    /// Nothing if no such unit, or file, was added.
    NewUnit* unit(std::string_view name);
    NewFile* file(std::string_view path);
    bool has_units() const { return !units_.empty(); }

    /// What will be ours from the first write on, whatever becomes of the build: all that was, and
    /// all that is new.
    OutputList journal(const OutputList& old) const;
    /// What is ours at the end.
    OutputList list(const OutputList& old) const;

private:
    std::unordered_set<std::string_view> kept_;                    ///< names in the old list
    std::unordered_map<std::string_view, std::string> kept_notes_; ///< those that are new
    std::deque<NewUnit> units_;
    std::unordered_map<std::string_view, NewUnit*> units_by_name_;
    std::unordered_map<std::string_view, NewFile*> files_;
};

} // namespace Lumenfold::Builder
