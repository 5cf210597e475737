#include "app/forms/add_dialog.h"

#include "app/context/app_context.h"
#include "app/editing/edit_queue.h"
#include "app/editing/editor_text.h"
#include "app/editing/reload.h"
#include "app/forms/dialog_frame.h"
#include "app/forms/image_import.h"
#include "runtime/corvel_app.h"
#include "site/path_text.h"

#include <algorithm>
#include <memory>

namespace Lumenfold {

namespace {

const std::string CREATE_BUTTON = "/Body/Actions/Create Button";
const std::string EXTERNAL_CHECKBOX = "/Body/External Row/External Checkbox";
const std::string ICON_HINT = "/Body/Icon Row/Icon Hint";
const std::string ICON_BROWSE_BUTTON = "/Body/Icon Row/Browse Button";

void open(const Context& context, const AddDialog& dialog, PickedIcon* icon) {
    if (!dialog.available(*context))
        return;
    for (const std::string& editor : dialog.editors)
        fill_editor(context->app, dialog.path + editor, "");
    if (icon)
        reset_icon_row(context, dialog.path, *icon);
    if (dialog.has_external)
        context->app.set_checked(dialog.path + EXTERNAL_CHECKBOX, true);
    context->app.set_visible(dialog.path, true);
}

void create(const Context& context, const AddDialog& dialog, const PickedIcon& icon) {
    if (!dialog.available(*context))
        return;
    AddDialogValues values;
    for (const std::string& editor : dialog.editors)
        values.texts.push_back(trimmed_value(*context, dialog.path + editor));
    if (std::any_of(dialog.required.begin(), dialog.required.end(),
                    [&](std::size_t position) { return values.texts[position].empty(); }))
        return;
    if (!import_icon(context, icon, values.icon))
        return;
    values.external =
        dialog.has_external && context->app.is_checked(dialog.path + EXTERNAL_CHECKBOX);
    flush_edits(context);
    std::string error;
    if (!dialog.add(context->edits.path, values, &error)) {
        context->message_dialog.show(dialog.failure_title, error);
        return;
    }
    context->app.set_visible(dialog.path, false);
    reload_after_change(context);
}

} // namespace

void wire_add_dialog(const Context& context, const AddDialog& dialog) {
    wire_dialog_frame(context, dialog.path);
    std::shared_ptr<PickedIcon> icon;
    if (!dialog.icon_title.empty())
        icon = wire_icon_row(context, dialog.path, dialog.icon_title);
    context->app.on_click(dialog.open_button,
                          [context, dialog, icon] { open(context, dialog, icon.get()); });
    context->app.on_click(dialog.path + CREATE_BUTTON, [context, dialog, icon] {
        create(context, dialog, icon ? *icon : PickedIcon());
    });
}

std::shared_ptr<PickedIcon> wire_icon_row(const Context& context, const std::string& dialog,
                                          const std::string& pick_title) {
    auto icon = std::make_shared<PickedIcon>();
    context->app.on_click(dialog + ICON_BROWSE_BUTTON, [context, dialog, pick_title, icon] {
        pick_image(context, pick_title, IMAGE_FILTER,
                   [context, dialog, icon](const std::filesystem::path& file) {
                       *icon = file;
                       context->app.set_text(dialog + ICON_HINT, path_to_utf8(file.filename()));
                   });
    });
    return icon;
}

void reset_icon_row(const Context& context, const std::string& dialog, PickedIcon& icon) {
    icon.clear();
    context->app.set_text(dialog + ICON_HINT, "No icon selected.");
}

} // namespace Lumenfold
