#include "app/editing/reload.h"

#include "app/context/app_context.h"
#include "app/editing/file_editor.h"
#include "app/editing/text_view.h"

namespace Lumenfold {

void discard_unsaved(const Context& context) {
    if (!context->configurator)
        return;
    discard_typed_text(context);
    for (const Guard& guard : context->configurator->guards)
        discard_unsaved_texts(context, guard.editor(*context));
}

void reload(const Context& context) {
    if (!anything_is_open(*context))
        return;
    discard_unsaved(context);
    reload_after_change(context);
}

void reload_after_change(const Context& context) {
    if (!anything_is_open(*context))
        return;
    context->configurator->reload(context);
    if (context->names_changed)
        context->names_changed(context);
}

} // namespace Lumenfold
