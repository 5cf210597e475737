#include "app/editing/disk_watch.h"

#include "app/context/app_context.h"
#include "app/editing/edit_queue.h"
#include "app/editing/file_editor.h"
#include "app/editing/reload.h"
#include "site/path_text.h"

#include <algorithm>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

bool anything_changed(const AppContext& context) {
    const auto& watched = context.edits.watched;
    return std::any_of(watched.begin(), watched.end(), [](const auto& file) {
        return stamp_of(path_from_utf8(file.first)) != file.second;
    });
}

} // namespace

void watch_file(AppContext& context, const fs::path& file) {
    context.edits.watched[path_to_utf8(file)] = stamp_of(file);
}

void compare_shown_with_disk(const Context& context) {
    if (!anything_is_open(*context))
        return;
    for (const Guard& guard : context->configurator->guards)
        compare_with_disk(context, guard.editor(*context));
    if (!anything_changed(*context))
        return;
    flush_edits(context);
    reload_after_change(context);
}

} // namespace Lumenfold
