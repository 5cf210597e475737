#pragma once

#include "app/context/context.h"

#include <functional>
#include <string>

namespace Lumenfold {

struct TextKeeper;

/// Connects the two buttons in `status_bar` by which kept text is taken back or given up; once for
/// each editor. `changed` runs after either. The keeper must live as long as the application.
void wire_text_keeper(const Context& context, TextKeeper& keeper, const std::string& status_bar,
                      const std::string& editor_path, const std::function<void()>& changed);

/// Notes which file is shown (its canonical path) with the text that it holds, which is on screen,
/// and offers what was kept of it.
void start_keeping(const AppContext& context, TextKeeper& keeper, const std::string& file,
                   const std::string& baseline);

/// Notes that unsaved text is on screen, with what its file held when it was begun, and keeps it.
void go_on_keeping(const AppContext& context, TextKeeper& keeper, const std::string& begun_on);

/// The text on screen is not in the file.
bool is_unsaved(const AppContext& context, const TextKeeper& keeper);

/// The file holds another text than the unsaved one on screen was begun on.
bool changed_beneath(const TextKeeper& keeper);

/// After a keystroke: two seconds later the text is kept, or, if it is the file's again, no more.
void keep_later(const Context& context, TextKeeper& keeper);

/// Keeps what is on screen, if it is unsaved.
void keep_now(const AppContext& context, const TextKeeper& keeper);

/// The text on screen was saved, or given up by a question.
void stop_keeping(const AppContext& context, TextKeeper& keeper);

/// What the status line says of an offer; empty while there is none.
std::string offer_message(const TextKeeper& keeper);

/// The folder of kept texts; empty if there is none.
std::string kept_folder(const AppContext& context);

} // namespace Lumenfold
