#include "builder/repository/file_stamp.h"
#include "builder/repository/git_place.h"
#include "builder/repository/repository.h"

namespace Lumenfold::Builder {

std::string tags_sign(const std::filesystem::path& source_folder) {
    const std::optional<GitPlace> place = find_git_place(source_folder);
    if (!place)
        return {};
    // Git never writes into a tag's file but replaces it, which changes the time of the folder.
    // Tags in folders below ("core/1.2.3") name no versions.
    return place->prefix + ' ' + file_stamp(place->shared_folder / "packed-refs") + ' ' +
           file_stamp(place->shared_folder / "refs" / "tags");
}

} // namespace Lumenfold::Builder
