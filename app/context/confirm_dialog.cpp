#include "app/context/confirm_dialog.h"

#include "app/context/app_context.h"
#include "runtime/corvel_app.h"

#include <utility>

namespace Lumenfold {

namespace {

const std::string TITLE = "/Titlebar/Title";
const std::string MESSAGE = "/Body/Message";
const std::string CONFIRM_BUTTON = "/Body/Actions/Confirm Button";
const std::string CONFIRM_LABEL = CONFIRM_BUTTON + "/Label";
const std::string CANCEL_BUTTON = "/Body/Actions/Cancel Button";
const std::string EXIT_BUTTON = "/Titlebar/Exit Button";

void confirm(const Context& context) {
    ConfirmDialog& dialog = context->confirm_dialog;
    context->app.set_visible(dialog.path, false);
    // Out of the slot before it runs: the action may ask the next question.
    if (const Continuation action = std::exchange(dialog.pending, nullptr))
        action(context);
}

void cancel(const Context& context) {
    context->confirm_dialog.pending = nullptr;
    context->app.set_visible(context->confirm_dialog.path, false);
}

} // namespace

void ConfirmDialog::show(const std::string& title, const std::string& message,
                         const std::string& confirm_label, Continuation action) {
    app->set_text(path + TITLE, title);
    app->set_text(path + MESSAGE, message);
    app->set_text(path + CONFIRM_LABEL, confirm_label);
    pending = std::move(action);
    app->set_visible(path, true);
}

void wire_confirm_dialog(const Context& context) {
    const std::string& dialog = context->confirm_dialog.path;
    context->app.set_visible(dialog, false);
    context->app.on_click(dialog + CONFIRM_BUTTON, [context] { confirm(context); });
    for (const std::string& button : {CANCEL_BUTTON, EXIT_BUTTON})
        context->app.on_click(dialog + button, [context] { cancel(context); });
}

} // namespace Lumenfold
