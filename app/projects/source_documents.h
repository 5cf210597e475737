#pragma once

#include "app/projects/project_state.h"
#include "site/json_file.h"

namespace Lumenfold {

/// Makes and wires the README and the license with their file editors, in this order.
void wire_source_documents(const Context& context);

/// Fills both from the manifest's "build".
void fill_source_documents(const Context& context, const Json& build);

/// Loads the file that the document's field names now.
void reload_source_document(const Context& context, SourceDocument& document);

} // namespace Lumenfold
