#pragma once

#include "app/context/context.h"
#include "site/json_file.h"

#include <span>
#include <string>

namespace Lumenfold {

/// A field that edits one text of the active configuration.
struct FormField {
    const char* node;    ///< below the node of the form
    const char* pointer; ///< JSON pointer of the text
};

/// Queues an edit for every change of a field. The table must live as long as the application.
void wire_form_fields(const Context& context, const std::string& form,
                      std::span<const FormField> fields);

/// Shows what the document holds; anything but a text empties its field.
void fill_form_fields(const Context& context, const std::string& form,
                      std::span<const FormField> fields, const Json& document);

} // namespace Lumenfold
