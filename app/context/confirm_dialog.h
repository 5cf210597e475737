#pragma once

#include "app/context/context.h"

#include <functional>
#include <string>

namespace Corvel {
class CorvelApp;
}

namespace Lumenfold {

/// What goes on after a question. It receives the context; it must not capture one.
using Continuation = std::function<void(const Context& context)>;

/// Asks before something is lost; every question of the program goes through the one dialog.
struct ConfirmDialog {
    Corvel::CorvelApp* app;
    std::string path;     ///< node path of the dialog
    Continuation pending; ///< the action of the question shown; a new question drops it

    /// `action` runs on the confirming button, after the dialog is hidden; it may show the dialog
    /// again.
    void show(const std::string& title, const std::string& message,
              const std::string& confirm_label, Continuation action);
};

void wire_confirm_dialog(const Context& context);

} // namespace Lumenfold
