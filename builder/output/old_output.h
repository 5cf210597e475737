#pragma once

#include "builder/output/output_list.h"

#include <string_view>
#include <unordered_map>

namespace Lumenfold::Builder {

/// What the last build left in an output folder, and what is still so.
class OldOutput {
public:
    /// Looks at every file of the list, below the open folder `base`.
    OldOutput(OutputList list, int base);

    const OutputList& list() const { return list_; }
    const ListedUnit* unit(std::string_view name) const;

    /// The file at a path if it is ours. Looking one up makes an index of all the first time.
    const ListedFile* file(std::string_view path);
    /// The unit that a file of ours belongs to.
    const ListedUnit* owner(std::string_view path);

private:
    struct Place {
        const ListedUnit* unit;
        const ListedFile* file;
    };
    const Place* place(std::string_view path);

    OutputList list_;
    std::unordered_map<std::string_view, const ListedUnit*> units_;
    std::unordered_map<std::string_view, Place> files_;
};

/// Whether a build finished the unit and all its files are as it left them.
bool is_intact(const ListedUnit& unit);

} // namespace Lumenfold::Builder
