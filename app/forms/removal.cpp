#include "app/forms/removal.h"

#include "app/context/app_context.h"
#include "app/editing/edit_queue.h"
#include "app/editing/reload.h"

#include <charconv>
#include <utility>

namespace Lumenfold {

void confirm_removal(const Context& context, const std::string& title, const std::string& message,
                     std::function<Result(const Context& context)> remove) {
    context->confirm_dialog.show(title, message, "Remove",
                                 [title, remove = std::move(remove)](const Context& later) {
                                     flush_edits(later);
                                     finish_change(later, title, remove(later));
                                 });
}

void finish_change(const Context& context, const std::string& title, const Result& result) {
    if (result || result.is_changed())
        reload_after_change(context);
    if (!result.error().empty())
        context->message_dialog.show(title, result.error());
}

long row_position(const std::string& row_id, const std::string& prefix) {
    if (row_id.size() <= prefix.size() || row_id.compare(0, prefix.size(), prefix) != 0)
        return -1;
    long position = 0;
    const char* end = row_id.data() + row_id.size();
    const auto [rest, error] = std::from_chars(row_id.data() + prefix.size(), end, position);
    return error == std::errc() && rest == end && position >= 0 ? position : -1;
}

} // namespace Lumenfold
