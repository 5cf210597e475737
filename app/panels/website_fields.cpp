#include "app/panels/website_fields.h"

#include "app/app_context.h"
#include "app/editing/edit_queue.h"
#include "app/editing/editor_text.h"
#include "app/json_view.h"
#include "app/panels/site_state.h"
#include "app/panels/tab_preview.h"
#include "app/shell/window_paths.h"
#include "runtime/corvel_app.h"

namespace Lumenfold {

namespace {

enum class FieldKind { Plain, TabText, Height, Elsewhere };

struct Field {
    const char* node;  ///< below the panel
    const char* group; ///< object that holds the key; null: the document itself
    const char* key;
    FieldKind kind;
    std::string PreviewState::*preview; ///< what the tab preview takes from it; null: nothing
};

const std::string PANEL = Paths::SITE_CONFIGURATOR + "/Editor Panel/Panels/Website Panel";

// clang-format off
constexpr Field FIELDS[] = {
    {"/Site Form/Title Field",       nullptr, "title",       FieldKind::Plain, nullptr},
    {"/Site Form/Description Field", nullptr, "description", FieldKind::Plain, nullptr},
    {"/Site Form/URL Field",         nullptr, "url",         FieldKind::Plain, nullptr},
    {"/Site Form/Copyright Field",   nullptr, "copyright",   FieldKind::Plain, nullptr},
    {"/Site Form/Output Field",      nullptr, "output",      FieldKind::Plain, nullptr},
    {"/Main Tab Group/Main Tab Form/Heights Row/Logo Height Field",
     "branding", "logo_height", FieldKind::Height, &PreviewState::logo_height},
    {"/Main Tab Group/Main Tab Form/Heights Row/Logo Height Mobile Field",
     "branding", "logo_height_mobile", FieldKind::Height, &PreviewState::logo_height_mobile},
    {"/Main Tab Group/Main Tab Form/Tab Text Field",
     "branding", "tab_text", FieldKind::TabText, &PreviewState::tab_text},
    {"/Favicon Picker/Background Row/Background Field",
     "branding", "favicon_background", FieldKind::Elsewhere, nullptr},
};
// clang-format on

std::string pointer(const Field& field) {
    return (field.group ? std::string("/") + field.group : std::string()) + "/" + field.key;
}

void edit_field(const Context& context, const Field& field, const std::string& text) {
    if (field.kind == FieldKind::Height && !is_valid_height(text))
        return;
    queue_edit(context, pointer(field), text);
    if (!field.preview)
        return;
    context->site->preview.*field.preview = text;
    update_tab_preview(context);
}

} // namespace

void fill_website_fields(const Context& context, const Json& site) {
    for (const Field& field : FIELDS) {
        const std::string text =
            text_at(field.group ? member_at(site, field.group) : site, field.key);
        fill_editor(context->app, PANEL + field.node, text);
        if (field.preview)
            context->site->preview.*field.preview = text;
    }
}

void wire_website_fields(const Context& context) {
    for (const Field& field : FIELDS)
        if (field.kind != FieldKind::Elsewhere)
            context->app.on_input(PANEL + field.node, [context, &field](const std::string& text) {
                edit_field(context, field, text);
            });
}

std::string site_title(const AppContext& context) {
    return context.app.input_value(PANEL + FIELDS[0].node);
}

} // namespace Lumenfold
