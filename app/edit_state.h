#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace Lumenfold {

/// JSON pointers (RFC 6901) with the text to assign there.
using PointerEdits = std::map<std::string, std::string>;

/// The edits of the active configuration that are not in its file yet, and the text that the text
/// view started from. Set anew by every fill of the panels, emptied when the configuration closes.
struct EditState {
    /// The configuration file, for a project the file of the member shown; empty while nothing is
    /// open, and edits are ignored then.
    std::string path;
    /// The file's text as last read or written. Always changed together with the text editor.
    std::string text;
    PointerEdits pending;          ///< for `path`; filled by `queue_edit`
    PointerEdits manifest_pending; ///< for the project's manifest; by `queue_manifest_edit`
    /// Rises with every queued edit and every flush, so that an older timer knows itself stale.
    std::uint32_t generation = 0;
};

/// A text file edited as plain text and written by its own Save button. Node paths and
/// `missing_text` are set once while wiring; `load_file_editor` sets the rest.
struct FileEditor {
    std::string status_path;  ///< the status message
    std::string wrap_path;    ///< the wrap check box
    std::string save_path;    ///< the save button
    std::string editor_path;  ///< the text editor
    std::string missing_text; ///< the message while the file is missing

    std::string path;          ///< the file being edited; may be empty
    std::string baseline;      ///< its text as last read or written
    bool found = false;        ///< the file could be read
    bool locked = false;       ///< state Locked on `editor_path`
    bool save_disabled = true; ///< state Disabled on `save_path`
};

} // namespace Lumenfold
