#pragma once

#include "app/context/edit_state.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Lumenfold {

/// Which entry of a set is shown, and the editor of the Markdown file that it names.
struct SetState {
    std::size_t index = 0;
    std::size_t count = 0;           ///< entries available
    std::string slug;                ///< of the entry shown
    std::vector<std::string> labels; ///< of the entries, as the combo box shows them
    FileEditor editor;
};

} // namespace Lumenfold
