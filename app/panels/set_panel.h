#pragma once

#include "app/shell.h"
#include "site/json_file.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Lumenfold {

/// Which entry of a set is shown.
struct SetSelection {
    std::size_t index = 0;
    std::size_t count = 0; ///< entries available
    std::string slug;      ///< of the entry shown
};

/// A field of the form: the node below "/Meta Form" and the key of the entry.
struct SetField {
    std::string node;
    std::string key;
};

/// A panel that shows one entry of an array at a time: a combo box chooses the entry, a form
/// edits it, a file editor edits the Markdown file that it names. Policies and topics are such.
struct SetPanel {
    std::string path;         ///< node path of the panel
    std::string pointer_root; ///< "/policies/": the array's JSON pointer with a slash behind
    std::string label_key;    ///< key that labels the entry in the combo box
    std::string numbered;     ///< label of an entry without one: this and the position from 1
    std::vector<SetField> fields;
    std::string file_key; ///< the key of the field that names the file
    std::string discard_message;
    std::shared_ptr<FileEditor> editor;
    /// Queues an edit of the file that holds the array.
    void (*queue)(const Context& context, const std::string& pointer,
                  const std::string& value) = nullptr;
    /// The file that a value of `file_key` means; empty for an empty value.
    std::string (*resolve)(const AppContext& context, const std::string& value) = nullptr;

    SetSelection selection; ///< written by `fill_set_panel` and by the combo box
};

/// Shows the entry selected, or the nearest that `entries` has; a value that is no array counts as
/// empty. Loads the file editor.
void fill_set_panel(const Context& context, SetPanel& panel, const Json& entries);

/// Wires combo box, form and file editor. The add and remove buttons belong to the caller.
void wire_set_panel(const Context& context, const std::shared_ptr<SetPanel>& panel);

/// Node path of a field of the form.
std::string set_field_path(const SetPanel& panel, const std::string& key);

} // namespace Lumenfold
