#pragma once

#include "app/shell.h"

#include <memory>
#include <string>

namespace Corvel {
class CorvelApp;
}

namespace Lumenfold {

struct FileEditor;

/// A file editor on the nodes of a panel: `status_bar` holds message, wrap check box and save
/// button.
std::shared_ptr<FileEditor> make_file_editor(const std::string& status_bar,
                                             const std::string& editor_path,
                                             const std::string& missing_text);

/// Connects the nodes of an editor. Once for each.
void wire_file_editor(Corvel::CorvelApp& app, const std::shared_ptr<FileEditor>& editor);

/// Fills an editor from a file, giving up what was typed. An empty path empties it; a file that
/// cannot be read locks it.
void load_file_editor(Corvel::CorvelApp& app, FileEditor& editor, const std::string& path);

/// Brings the message and the save button in line with the text.
void refresh_file_editor(Corvel::CorvelApp& app, FileEditor& editor);

/// The editor holds text that is not in its file.
bool file_editor_dirty(const Corvel::CorvelApp& app, const FileEditor& editor);

} // namespace Lumenfold
