#include "app/forms/dialog_frame.h"

#include "app/context/app_context.h"
#include "runtime/corvel_app.h"
#include "site/text_helpers.h"

namespace Lumenfold {

void wire_dialog_frame(const Context& context, const std::string& dialog) {
    context->app.set_visible(dialog, false);
    for (const char* button : {"/Titlebar/Exit Button", "/Body/Actions/Cancel Button"})
        context->app.on_click(dialog + button,
                              [context, dialog] { context->app.set_visible(dialog, false); });
}

std::string trimmed_value(const AppContext& context, const std::string& editor_path) {
    return trim(context.app.input_value(editor_path));
}

} // namespace Lumenfold
