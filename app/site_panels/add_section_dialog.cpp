#include "app/site_panels/add_section_dialog.h"

#include "app/context/app_context.h"
#include "app/context/window_paths.h"
#include "app/editing/edit_queue.h"
#include "app/editing/editor_text.h"
#include "app/editing/reload.h"
#include "app/forms/add_dialog.h"
#include "app/forms/dialog_frame.h"
#include "app/site_panels/edit_section_dialog.h"
#include "runtime/corvel_app.h"
#include "site/config_files.h"
#include "site/home_sections.h"
#include "site/path_text.h"
#include "site/slug.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace Lumenfold {

namespace {

const std::string DIALOG = Paths::ADD_SECTION_DIALOG;
const std::string OPEN_BUTTON = Paths::SITE_CONFIGURATOR +
                                "/Editor Panel/Panels/Website Panel/Home Layout/Layout Header"
                                "/Add Button";
const std::string LABEL_EDITOR = DIALOG + "/Body/Label Editor";
const std::string SUBTEXT_EDITOR = DIALOG + "/Body/Subtext Editor";
const std::string PRESETS_LABEL = DIALOG + "/Body/Presets Label";
const std::string CREATE_BUTTON = DIALOG + "/Body/Actions/Create Button";

constexpr const char* FAILURE_TITLE = "Couldn't Add Section";
constexpr const char* WRITE_FAILURE = "Could not update the site configuration.";

/// A button that adds a section of one type.
struct Preset {
    std::string button;
    const char* type;
};
const Preset PRESETS[] = {
    {DIALOG + "/Body/Description Preset", "description"},
    {DIALOG + "/Body/Projects Preset", "projects"},
    {DIALOG + "/Body/Socials Preset", "socials"},
};

void open(const Context& context, PickedIcon& icon) {
    if (!site_is_open(*context))
        return;
    Corvel::CorvelApp& app = context->app;
    const auto present = read_home_sections(path_from_utf8(context->edits.path));
    bool any = false;
    for (const Preset& preset : PRESETS) {
        const bool absent = std::count(present.begin(), present.end(), preset.type) == 0;
        app.set_visible(preset.button, absent);
        any = any || absent;
    }
    app.set_visible(PRESETS_LABEL, any);
    fill_editor(app, LABEL_EDITOR, "");
    fill_editor(app, SUBTEXT_EDITOR, "");
    reset_icon_row(context, DIALOG, icon);
    app.set_visible(DIALOG, true);
}

/// True if the section is in the file and on the panel; the dialog is closed then.
bool add_section(const Context& context, const Json& section) {
    if (!add_home_section(path_from_utf8(context->edits.path), section)) {
        context->message_dialog.show(FAILURE_TITLE, WRITE_FAILURE);
        return false;
    }
    context->app.set_visible(DIALOG, false);
    reload_after_change(context);
    return true;
}

void add_preset(const Context& context, const Preset& preset) {
    if (!site_is_open(*context))
        return;
    flush_edits(context);
    Json section = Json::object();
    section["type"] = preset.type;
    add_section(context, section);
}

void create_custom(const Context& context, const PickedIcon& icon) {
    const std::string label = trimmed_value(*context, LABEL_EDITOR);
    if (!site_is_open(*context) || label.empty())
        return;
    flush_edits(context);
    std::string reference;
    if (!import_icon(context, icon, reference))
        return;
    const std::filesystem::path file = path_from_utf8(context->edits.path);
    const std::string id = unique_section_id(file, slugify(label));
    const std::string body = create_home_section_fragment(file.parent_path(), id);
    if (body.empty()) {
        context->message_dialog.show(FAILURE_TITLE, "Could not create the section's content file.");
        return;
    }
    Json section = Json::object();
    section["type"] = "custom";
    section["id"] = id;
    section["label"] = label;
    if (!reference.empty())
        section["icon"] = reference;
    if (const std::string subtext = trimmed_value(*context, SUBTEXT_EDITOR); !subtext.empty())
        section["subtext"] = subtext;
    section["body"] = body;
    // A new section goes straight to its editor.
    if (add_section(context, section))
        open_section_editor(context, body, label);
}

} // namespace

void wire_add_section_dialog(const Context& context) {
    Corvel::CorvelApp& app = context->app;
    wire_dialog_frame(context, DIALOG);
    const auto icon =
        wire_icon_row(context, DIALOG, "Select a section icon (copied into your site)");
    app.on_click(OPEN_BUTTON, [context, icon] { open(context, *icon); });
    for (const Preset& preset : PRESETS)
        app.on_click(preset.button, [context, &preset] { add_preset(context, preset); });
    app.on_click(CREATE_BUTTON, [context, icon] { create_custom(context, *icon); });
}

} // namespace Lumenfold
