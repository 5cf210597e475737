#include "app/editing/saving.h"

#include "app/context/app_context.h"
#include "site/text_file.h"

#include <utility>

namespace Lumenfold {

bool save_text(const Context& context, const std::filesystem::path& file, const std::string& text) {
    const Result written = write_text_file_in_folders(file, text);
    if (!written)
        tell_failed_save(context, written.error());
    return static_cast<bool>(written);
}

void tell_failed_save(const Context& context, const std::string& reason) {
    context->message_dialog.show("Couldn't Save", reason);
}

void tell_changed_list(const Context& context) {
    context->message_dialog.show("Changed on Disk", Result::changed().error());
}

void ask_to_overwrite(const Context& context, Continuation overwrite) {
    context->confirm_dialog.show("Changed on Disk", "Overwrite the changes on disk?", "Overwrite",
                                 std::move(overwrite));
}

} // namespace Lumenfold
