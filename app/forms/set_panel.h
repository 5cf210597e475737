#pragma once

#include "app/context/context.h"
#include "app/context/set_state.h"
#include "app/forms/add_set_dialog.h"
#include "site/json_text.h"
#include "site/result.h"
#include "site/shown_record.h"

#include <string>
#include <vector>

namespace Lumenfold {

/// A field of the form: the node below "/Meta Form" and the key of the entry.
struct SetField {
    std::string node;
    std::string key;
};

/// A panel that shows one entry of an array at a time: a combo box chooses the entry, a form
/// edits it, a file editor edits the Markdown file that it names, and a dialog adds another.
/// Policies and topics are such; this is what tells them apart.
struct SetPanel {
    std::string path;         ///< node path of the panel
    std::string pointer_root; ///< "/policies/": the array's JSON pointer with a slash behind
    std::string label_key;    ///< key that labels the entry in the combo box
    std::string numbered;     ///< label of an entry without one: this and the position from 1
    std::vector<SetField> fields;
    std::string file_key; ///< the key of the field that names the file
    std::string missing_text;
    std::string discard_message;
    std::string removal_title;
    AddSetDialog dialog;
    SetState& (*state)(AppContext& context);
    /// Queues an edit of the file that holds the array.
    void (*queue)(const Context& context, const std::string& pointer, const std::string& value);
    /// The question before the entry shown is removed.
    std::string (*removal_question)(const AppContext& context);
    /// Removes an entry from its file.
    Result (*remove)(const AppContext& context, const ShownRecord& shown);
};

/// Shows the entry selected, or the nearest that `entries` has; a value that is no array counts as
/// empty. Loads the file editor.
void fill_set_panel(const Context& context, const SetPanel& panel, const Json& entries);

/// Wires combo box, form, file editor, removal and dialog. The panel must live as long as the
/// application.
void wire_set_panel(const Context& context, const SetPanel& panel);

/// Node path of a field of the form.
std::string set_field_path(const SetPanel& panel, const std::string& key);

} // namespace Lumenfold
