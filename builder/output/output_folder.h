#pragma once

#include "builder/report/message.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Lumenfold::Builder {

/// What a build did with files.
struct OutputCounts {
    std::size_t written = 0;
    std::size_t kept = 0;
    std::size_t removed = 0;
};

/// The folder of a built site. It keeps a list of the files that the builder made in it; nothing
/// else there is ever replaced or removed. Each file is written whole (made beside, then moved), so
/// that readers never meet half a page, and a build that was killed at any moment leaves a list
/// from which the next one goes on.
///
/// A site is made in units (a project, the pages of the site itself): a unit with the sign of the
/// last build whose files are as they were left need not be made again.
class OutputFolder {
public:
    /// Opens and locks the folder, making it if it is missing. Nothing, with words for the user in
    /// `problem`, if it is the site's own folder or one above it, holds files and no list of ours,
    /// cannot be written, or another build has it.
    static std::optional<OutputFolder> open(const std::filesystem::path& folder,
                                            const std::filesystem::path& site_folder,
                                            std::string& problem);
    ~OutputFolder();
    OutputFolder(OutputFolder&&) noexcept;
    OutputFolder& operator=(OutputFolder&&) noexcept;

    const std::filesystem::path& folder() const;

    /// Whether the last build made `unit` with this sign and all its files are as it left them.
    bool is_current(std::string_view unit, std::string_view sign) const;

    /// Whether the last build finished `unit`, with any sign, and all its files are as it left
    /// them.
    bool is_intact(std::string_view unit) const;

    /// What the last build noted for a unit; nothing if it made no such unit.
    std::optional<std::string> note(std::string_view unit) const;
    /// The paths that the last build wrote for a unit.
    std::vector<std::string> paths(std::string_view unit) const;

    /// Keeps a current unit as it is. What is kept before a claim
    /// is looked at when paths are claimed twice.
    void keep(std::string_view unit);
    /// Announces a unit that will be made, with the paths of all its files, relative with "/". A
    /// path that is not fit for a file, is claimed twice, or is taken by a file that is not ours is
    /// told and later writes to it are passed over.
    void claim(std::string_view unit, std::string_view sign, const std::vector<std::string>& paths,
               Messages& messages);
    /// Puts down what will be ours, before the first write. False, with words, if that fails.
    bool begin(std::string& problem);

    /// Writes one file of a claimed unit, unless it has these bytes already or its path was refused
    /// to this unit. May be called from several threads for different files. A failure, or a
    /// request for the end, ends all writing and is told by `finish`.
    void write(std::string_view unit, std::string_view path, std::string_view bytes);
    /// Keeps bytes for the next build to be read by `note`, in the place of the unit's old note,
    /// which claimed units and kept ones have else. May be called like `write`, for different
    /// units.
    void set_note(std::string_view unit, std::string bytes);

    /// Removes our files that no unit has any more and closes the list. False, with words, if a
    /// write failed: the list then still says that the build is unfinished.
    bool finish(OutputCounts& counts, std::string& problem);

private:
    struct State;
    explicit OutputFolder(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

} // namespace Lumenfold::Builder
