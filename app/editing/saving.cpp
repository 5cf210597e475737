#include "app/editing/saving.h"

#include "app/context/app_context.h"
#include "site/text_file.h"

#include <utility>

namespace Lumenfold {

namespace {

constexpr const char* FAILURE_TITLE = "Couldn't Save";

} // namespace

bool save_text(const Context& context, const std::filesystem::path& file, const std::string& text) {
    const Result written = write_text_file(file, text);
    if (!written)
        context->message_dialog.show(FAILURE_TITLE, written.error());
    return static_cast<bool>(written);
}

void tell_unwritten_edits(const Context& context, const Result& failure) {
    if (std::exchange(context->edits.told_failure, failure.error()) != failure.error())
        context->message_dialog.show(FAILURE_TITLE, failure.error());
}

void ask_to_overwrite(const Context& context, Continuation overwrite) {
    context->confirm_dialog.show("Changed on Disk", "Overwrite the changes on disk?", "Overwrite",
                                 std::move(overwrite));
}

} // namespace Lumenfold
