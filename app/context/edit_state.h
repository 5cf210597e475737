#pragma once

#include "site/file_stamp.h"
#include "site/json_text.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace Lumenfold {

/// JSON pointers (RFC 6901) with the text to assign there.
using PointerEdits = std::map<std::string, std::string>;

/// Edits of a file that could not be written before another file came up.
struct WaitingEdits {
    PointerEdits edits;
    std::shared_ptr<const Json> shown; ///< the document that they were made on
};

/// Why the edits of a file stay pending.
struct UnwrittenEdits {
    std::string reason; ///< with the file's path
    bool told = false;
};

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
    std::map<std::string, std::optional<FileStamp>>
        watched; ///< what the panels show, by path; by `watch_file`
    /// Ends the question to the builder that runs for this file; null while there is none.
    std::function<void()> end_query;
    std::map<std::string, UnwrittenEdits> unwritten;  ///< by file, until its edits are written
    std::multimap<std::string, WaitingEdits> waiting; ///< by file, until it is shown again
};

/// Unsaved text of a file that outlived the program.
struct KeptText {
    std::string text;
    std::string date;     ///< local time of its last keystroke, "2026-01-31 09:05"
    std::string begun_on; ///< what the file held when the text was begun
};

/// What the text of one editor is compared with, and its keeping in the application's data folder
/// while it is unsaved. By the functions of app/editing/text_keeper.h.
struct TextKeeper {
    std::string restore_path; ///< node paths, set once while wiring
    std::string discard_path;
    std::string editor_path;

    std::string file;     ///< canonical path of the file shown; may be empty
    std::string baseline; ///< its text as last read or written
    /// What the file held when the text shown was begun: the baseline, unless others changed the
    /// file under unsaved text.
    std::string begun_on;
    std::optional<KeptText> offered; ///< kept text of it that the user may take back
    std::uint32_t generation = 0;    ///< rises with every keystroke
};

/// Text that is in no file yet, and what its file held when it was begun.
struct UnsavedText {
    std::string text;
    std::string begun_on;
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
    std::string problem;       ///< what is wrong with the file that names it; shown while clean
    bool found = false;        ///< the file could be read
    bool locked = false;       ///< state Locked on `editor_path`
    bool save_disabled = true; ///< state Disabled on `save_path`
    TextKeeper keeper;
    std::map<std::string, UnsavedText> unsaved; ///< of files shown earlier, by canonical path
};

} // namespace Lumenfold
