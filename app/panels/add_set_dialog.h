#pragma once

#include "app/shell.h"

#include <memory>
#include <string>
#include <vector>

namespace Lumenfold {

/// Which derived fields the user took over; they are overwritten no longer.
struct AddSetState {
    bool slug_edited = false;
    bool file_edited = false;
};

/// The dialog that adds an entry to a set: the slug follows the name and the file follows the slug
/// until the user edits them; emptied, they follow again.
struct AddSetDialog {
    std::string path;        ///< node path of the dialog
    std::string name_editor; ///< node paths of the three derived editors
    std::string slug_editor;
    std::string file_editor;
    std::string browse_button;              ///< picks the file
    std::vector<std::string> other_editors; ///< emptied with them when the dialog opens
    std::string file_folder;                ///< "policies/": put before the slug
    std::string pick_title;
    /// Folder that the file dialog starts in, and folder that a chosen file is written relative to.
    std::string (*start_folder)(const AppContext& context) = nullptr;
    std::string (*base_folder)(const AppContext& context) = nullptr;
    AddSetState state;
};

/// Wires the derivation, the file dialog and leaving.
void wire_add_set_dialog(const Context& context, const std::shared_ptr<AddSetDialog>& dialog);

/// Empties the editors and shows the dialog.
void open_add_set_dialog(const Context& context, AddSetDialog& dialog);

/// The file that a set's entry of this slug is given by default; empty without a slug.
std::string default_set_file(const AddSetDialog& dialog, const std::string& slug);

/// Makes a missing Markdown file with its folder, with `title` as heading.
void create_markdown_file(const std::string& file, const std::string& title);

} // namespace Lumenfold
