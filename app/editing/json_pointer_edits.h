#pragma once

#include "app/context/edit_state.h"
#include "site/json_text.h"

namespace Lumenfold {

/// The edits that fit a document.
struct FittingEdits {
    PointerEdits edits;
    bool all_found = true; ///< none was left out for its list's sake
};

/// Leaves out edits that do not fit the document, such as a member of a string. A list is never
/// made longer: an edit of an element that it does not have is left out too.
///
/// `shown` is the document that the edits were made on, if it is known: an edit of a list element
/// that is another record by now is left out.
FittingEdits find_fitting(const Json& document, const PointerEdits& edits,
                          const Json* shown = nullptr);

/// Assigns each text at its pointer, creating members that are missing. The edits must fit.
void assign_edits(Json& document, const PointerEdits& edits);

} // namespace Lumenfold
