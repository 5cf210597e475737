#pragma once

#include "builder/pages/site_assets.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Lumenfold::Builder {

// The files that the search script loads. Each is a script that hands one value to
// `lumenfoldSearch(name, value)`, since a page that was opened from a folder can load nothing else.

/// Appends a number in base 32, the lowest digit first, for a literal of a script. A digit is the
/// character that comes so far after "0"; all but the last are 32 higher.
void put_digits(std::string& out, std::uint32_t number);

/// Sorted terms with their uses, cut into files of some kilobytes. Each line is a term, with one
/// digit for what it shares with the one before, a blank and the uses.
class TermShards {
public:
    TermShards(std::string path, std::vector<SiteAsset>& files)
        : path_(std::move(path))
        , files_(files) {}

    void add(std::string_view term, std::string_view uses);
    /// Closes the last file. Gives, separated by blanks, the shortest beginnings of the files'
    /// first terms that come behind all terms of the file before.
    std::string finish();

private:
    void close();

    std::string path_;
    std::vector<SiteAsset>& files_;
    std::string lines_;
    std::string last_;
    std::string starts_;
    std::size_t count_ = 0;
};

/// Records, some to a file; a record's number tells its file and its place there.
class RecordShards {
public:
    static constexpr std::uint32_t RECORDS_IN_FILE = 8;

    std::uint32_t add(std::string_view record);
    void finish();
    std::size_t count() const { return count_; }
    /// One more than the highest number.
    std::size_t numbers() const { return (files_.size() + 1) * RECORDS_IN_FILE; }
    /// Moves the files to the end of `files`.
    void append_to(std::vector<SiteAsset>& files);

private:
    std::string lines_;
    std::uint32_t in_file_ = 0;
    std::size_t count_ = 0;
    std::vector<SiteAsset> files_;
};

/// The file that is loaded first: how many pages there are and where the shards begin.
std::string index_script(std::size_t pages, std::string_view term_starts,
                         std::string_view mirror_starts);

} // namespace Lumenfold::Builder
