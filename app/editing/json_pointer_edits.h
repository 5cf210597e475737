#pragma once

#include "app/context/edit_state.h"
#include "site/json_text.h"

namespace Lumenfold {

/// What became of edits.
struct AppliedEdits {
    bool any = false;      ///< the document was changed
    bool all_found = true; ///< none was dropped for its list's sake
};

/// Assigns each text at its pointer, creating members that are missing. An edit that does not fit
/// the document, such as a member of a string, is dropped; the others still apply. A list is never
/// made longer: an edit of an element that it does not have is dropped too.
///
/// `shown` is the document that the edits were made on, if it is known: an edit of a list element
/// that is another record by now is dropped.
AppliedEdits apply_edits(Json& document, const PointerEdits& edits, const Json* shown = nullptr);

} // namespace Lumenfold
