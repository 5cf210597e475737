#include "builder/site/watch_list.h"

#include "builder/repository/repository.h"
#include "builder/site/sign.h"

namespace Lumenfold::Builder {

std::string WatchList::sign() const {
    Sign sign;
    for (const std::filesystem::path& file : files)
        sign.add_file(file);
    for (const std::filesystem::path& source : sources)
        sign.add(tags_sign(source));
    return sign.hex();
}

} // namespace Lumenfold::Builder
