#pragma once

#include "app/context/context.h"
#include "app/context/edit_state.h"
#include "site/json_text.h"

#include <string>

namespace Lumenfold {

// Edits that could not be written stay pending. While their file is not shown they wait, and are
// taken up again when it is.

/// Notes why the edits of a file were not written.
void note_unwritten(AppContext& context, const std::string& file, const std::string& reason);

/// Tells what was noted of a file, once for each reason in a row.
void tell_unwritten(const Context& context, const std::string& file);

/// Lets the pending edits wait, before the configuration `next` is read. If it is another one, it
/// is told why they were not written.
void put_edits_aside(const Context& context, const std::string& next);

/// The same for those of the manifest shown, before another is read.
void put_manifest_edits_aside(const Context& context);

/// Takes up the edits that wait for a file: in `pending` they are queued again, and `document`,
/// which is what the file holds, gets them. Those of records that are not in their places any more
/// are dropped, which is told.
void resume_edits(const Context& context, const std::string& file, PointerEdits& pending,
                  Json& document);

/// Drops an edit that waits for a file, since the user typed anew.
void drop_waiting_edit(AppContext& context, const std::string& file, const std::string& pointer);

/// Drops the pending edits of texts that are others in `text`, by which the user replaces the
/// configuration.
void drop_overtaken_edits(AppContext& context, const std::string& text);

} // namespace Lumenfold
