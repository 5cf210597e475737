#pragma once

#include "app/context/context.h"

#include <string>

namespace Corvel {
class CorvelApp;
}

namespace Lumenfold {

/// Tells the user of a failure; every report of the program goes through the one dialog.
struct MessageDialog {
    Corvel::CorvelApp* app;
    std::string path; ///< node path of the dialog

    void show(const std::string& title, const std::string& message) const;
};

void wire_message_dialog(const Context& context);

} // namespace Lumenfold
