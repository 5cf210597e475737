#pragma once

#include "site/file_stamp.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
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
    /// The file holds another text than `text`, while the text view has unsaved changes.
    bool changed_on_disk = false;
    std::map<std::string, std::optional<FileStamp>>
        watched; ///< what the panels show, by path; by `watch_file`
    /// Ends the question to the builder that runs for this file; null while there is none.
    std::function<void()> end_query;
    std::string told_failure; ///< of the last write of form edits; empty after a success
};

/// Unsaved text of a file that outlived the program.
struct KeptText {
    std::string text;
    std::string date; ///< local time of its last keystroke, "2026-01-31 09:05"
};

/// Keeps the unsaved text of one editor in the application's data folder. By the functions of
/// app/editing/text_keeper.h.
struct TextKeeper {
    std::string restore_path; ///< node paths, set once while wiring
    std::string discard_path;
    std::string editor_path;

    std::string file;                ///< canonical path of the file shown; may be empty
    std::string baseline;            ///< its text as last read or written
    std::optional<KeptText> offered; ///< kept text of it that the user may take back
    std::uint32_t generation = 0;    ///< rises with every keystroke
};

/// Text that is in no file yet, and what its file held when it was read.
struct UnsavedText {
    std::string text;
    std::string baseline;
};

/// A text file edited as plain text and written by its own Save button. Node paths and
/// `missing_text` are set once while wiring; `load_file_editor` sets the rest.
struct FileEditor {
    std::string status_path;  ///< the status message
    std::string wrap_path;    ///< the wrap check box
    std::string save_path;    ///< the save button
    std::string editor_path;  ///< the text editor
    std::string missing_text; ///< the message while the file is missing

    std::string path;             ///< the file being edited; may be empty
    std::string baseline;         ///< its text as last read or written
    std::string problem;          ///< why the file to edit is not known; shown while there is none
    bool found = false;           ///< the file could be read
    bool locked = false;          ///< state Locked on `editor_path`
    bool save_disabled = true;    ///< state Disabled on `save_path`
    bool changed_on_disk = false; ///< since the text shown was begun
    TextKeeper keeper;
    std::map<std::string, UnsavedText> unsaved; ///< of files shown earlier, by canonical path
};

} // namespace Lumenfold
