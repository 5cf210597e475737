#include "app/context/message_dialog.h"

#include "app/context/app_context.h"
#include "runtime/corvel_app.h"

namespace Lumenfold {

namespace {

const std::string TITLE = "/Titlebar/Title";
const std::string MESSAGE = "/Body/Message";
const std::string OK_BUTTON = "/Body/OK Button";
const std::string EXIT_BUTTON = "/Titlebar/Exit Button";

} // namespace

void MessageDialog::show(const std::string& title, const std::string& message) const {
    app->set_text(path + TITLE, title);
    app->set_text(path + MESSAGE, message);
    app->set_visible(path, true);
}

void wire_message_dialog(const Context& context) {
    const std::string& dialog = context->message_dialog.path;
    context->app.set_visible(dialog, false);
    for (const std::string& button : {OK_BUTTON, EXIT_BUTTON})
        context->app.on_click(dialog + button,
                              [context, dialog] { context->app.set_visible(dialog, false); });
}

} // namespace Lumenfold
