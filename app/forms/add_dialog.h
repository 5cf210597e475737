#pragma once

#include "app/context/context.h"
#include "app/forms/image_import.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace Lumenfold {

/// What a user entered in an add dialog.
struct AddDialogValues {
    std::vector<std::string> texts; ///< trimmed, in the order of the dialog's editors
    std::string icon;               ///< reference of the icon chosen; empty for none
    bool external = false;
};

/// A dialog that adds one record to a list of the active configuration.
struct AddDialog {
    std::string path;                  ///< node path of the dialog
    std::string open_button;           ///< the node that opens it
    std::vector<std::string> editors;  ///< below `path`, such as "/Body/Label Editor"
    std::vector<std::size_t> required; ///< positions in `editors`; empty ones stop silently
    std::string icon_title;            ///< of the icon's file dialog; empty: no icon row
    bool has_external = false;         ///< has the External check box, checked when opened
    std::string failure_title;
    /// Whether the dialog may open and create now.
    bool (*available)(const AppContext& context) = nullptr;
    /// Changes the file; words for the user in `error` on failure.
    bool (*add)(const std::string& config_path, const AddDialogValues& values,
                std::string* error) = nullptr;
};

/// Wires opening, icon, creating and leaving of a dialog. A created record is followed by
/// `reload_after_change`.
void wire_add_dialog(const Context& context, const AddDialog& dialog);

/// Wires an "Icon Row" below `dialog`. The result holds the file chosen; `reset_icon_row` clears
/// it.
std::shared_ptr<PickedIcon> wire_icon_row(const Context& context, const std::string& dialog,
                                          const std::string& pick_title);
void reset_icon_row(const Context& context, const std::string& dialog, PickedIcon& icon);

} // namespace Lumenfold
