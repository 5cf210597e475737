#pragma once

#include "app/context/context.h"

#include <string>

namespace Lumenfold {

struct FileEditor;

/// Gives an editor the nodes of a panel and connects them; once for each. `status_bar` holds
/// message, wrap check box and save button. The editor must live as long as the application.
void wire_file_editor(const Context& context, FileEditor& editor, const std::string& status_bar,
                      const std::string& editor_path, const std::string& missing_text);

/// Shows a file. Unsaved text of the file shown before is remembered, and that of the new one, if
/// there is any, shown in place of what the disk holds. An empty path empties the editor; a file
/// that cannot be read locks it, unless there is unsaved text of it.
void load_file_editor(const Context& context, FileEditor& editor, const std::string& path);

/// Gives up the unsaved text of the file shown.
void discard_shown_text(const Context& context, FileEditor& editor);

/// Gives up all unsaved text, that of files shown earlier too.
void discard_unsaved_texts(const Context& context, FileEditor& editor);

/// Shows no file any more. Unsaved text is kept for the next time that its file is opened.
void empty_file_editor(const Context& context, FileEditor& editor);

/// Compares the file shown with the disk: one that changed is read again, unless there is unsaved
/// text of it, which stays and is told that it is behind.
void compare_with_disk(const Context& context, FileEditor& editor);

/// The text shown is not in its file.
bool file_editor_dirty(const AppContext& context, const FileEditor& editor);

/// The editor holds text that is in no file: the one shown, or one that was shown before.
bool has_unsaved_text(const AppContext& context, const FileEditor& editor);

} // namespace Lumenfold
