#pragma once

#include "builder/output/whole_files.h"

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// Bytes kept from build to build, each under the hash of its content: a list that names a note
/// finds it as it was, whatever came after.
class NoteStore {
public:
    explicit NoteStore(const std::filesystem::path& output_folder);

    /// Makes the folder; before the first `keep`.
    bool start(std::error_code& error) const;
    /// Keeps the bytes and gives their name. Several threads may do so.
    std::string keep(std::string_view bytes, WholeFiles& files, std::error_code& error) const;
    /// Nothing if there is no such note, or it is not what it was.
    std::optional<std::string> read(const std::string& name) const;
    /// Removes the notes that no list names any more.
    void remove_others(const std::set<std::string>& names) const;

private:
    std::filesystem::path folder_;
};

} // namespace Lumenfold::Builder
