#include "app/forms/form_fields.h"

#include "app/context/app_context.h"
#include "app/context/json_view.h"
#include "app/editing/edit_queue.h"
#include "app/editing/editor_text.h"
#include "runtime/corvel_app.h"

#include <nlohmann/json.hpp>

namespace Lumenfold {

void wire_form_fields(const Context& context, const std::string& form,
                      std::span<const FormField> fields) {
    for (const FormField& field : fields)
        context->app.on_input(form + field.node,
                              [context, pointer = field.pointer](const std::string& text) {
                                  queue_edit(context, pointer, text);
                              });
}

void fill_form_fields(const Context& context, const std::string& form,
                      std::span<const FormField> fields, const Json& document) {
    for (const FormField& field : fields)
        fill_editor(context->app, form + field.node, text_at_pointer(document, field.pointer));
}

} // namespace Lumenfold
