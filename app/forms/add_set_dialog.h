#pragma once

#include "app/context/context.h"

#include <string>
#include <vector>

namespace Lumenfold {

/// What a user entered for a new entry of a set, trimmed, with the defaults of empty fields.
struct SetEntry {
    std::string name;
    std::string slug;
    std::string title;
    std::string file;
};

/// The dialog that adds an entry to a set: the slug follows the name and the file follows the slug
/// until the user edits them; emptied, they follow again. Creating also makes the Markdown file, if
/// it is missing.
struct AddSetDialog {
    std::string path; ///< node path of the dialog
    std::string open_button;
    std::string name_editor; ///< node paths of the four editors that every set has
    std::string slug_editor;
    std::string title_editor;
    std::string file_editor;
    std::string browse_button;              ///< picks the file
    std::vector<std::string> other_editors; ///< emptied with them when the dialog opens
    std::string checkbox;                   ///< checked when the dialog opens; may be empty
    std::string file_folder;                ///< "policies/": put before the slug
    /// A file picked outside `base_folder` is copied into this folder below it; empty: used as it
    /// is.
    std::string import_folder;
    std::string pick_title;
    std::string failure_title;
    /// Whether the dialog may open and create now.
    bool (*available)(const AppContext& context);
    /// Folder that the file dialog starts in, and folder that a chosen file is written relative to.
    std::string (*start_folder)(const AppContext& context);
    std::string (*base_folder)(const AppContext& context);
    /// The title of an entry whose title was left empty.
    std::string (*default_title)(const AppContext& context, const std::string& name);
    /// Adds the entry to its file; words for the user in `error` on failure.
    bool (*add)(const AppContext& context, const SetEntry& entry, std::string* error);
    /// The Markdown file that an entry's file reference means.
    std::string (*resolve)(const AppContext& context, const std::string& reference);
};

/// Wires opening, the derivation, the file dialog, creating and leaving. The dialog must live as
/// long as the application. A created entry is followed by `reload_after_change`.
void wire_add_set_dialog(const Context& context, const AddSetDialog& dialog);

} // namespace Lumenfold
