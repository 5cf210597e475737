#pragma once

#include "builder/documents/document_writer.h"
#include "builder/documents/html_draft.h"

namespace Lumenfold::Builder {

/// Reads a draft into a document. Only elements and attributes of the allow-list arrive there, so
/// nothing that runs script does; what a reader would miss is told.
void read_html(const HtmlDraft& draft, DocumentWriter& writer);

} // namespace Lumenfold::Builder
