#include "app/site_panels/website_fields.h"

#include "app/context/app_context.h"
#include "app/context/json_view.h"
#include "app/context/window_paths.h"
#include "app/editing/edit_queue.h"
#include "app/editing/editor_text.h"
#include "app/forms/form_fields.h"
#include "app/site_panels/tab_preview.h"
#include "runtime/corvel_app.h"

namespace Lumenfold {

namespace {

const std::string PANEL = Paths::SITE_CONFIGURATOR + "/Editor Panel/Panels/Website Panel";
constexpr const char* TITLE_FIELD = "/Site Form/Title Field";

constexpr FormField FIELDS[] = {
    {TITLE_FIELD, "/title"},
    {"/Site Form/Description Field", "/description"},
    {"/Site Form/URL Field", "/url"},
    {"/Site Form/Copyright Field", "/copyright"},
    {"/Site Form/Output Field", "/output"},
};

/// A field that the previews of the browser tab follow.
struct PreviewField {
    FormField field;
    bool is_height; ///< saved only while it is one
    std::string PreviewState::*preview;
};

const PreviewField PREVIEW_FIELDS[] = {
    {{"/Main Tab Group/Main Tab Form/Heights Row/Logo Height Field", "/branding/logo_height"},
     true,
     &PreviewState::logo_height},
    {{"/Main Tab Group/Main Tab Form/Heights Row/Logo Height Mobile Field",
      "/branding/logo_height_mobile"},
     true,
     &PreviewState::logo_height_mobile},
    {{"/Main Tab Group/Main Tab Form/Tab Text Field", "/branding/tab_text"},
     false,
     &PreviewState::tab_text},
};

void edit_preview_field(const Context& context, const PreviewField& row, const std::string& text) {
    if (row.is_height && !is_valid_height(text))
        return;
    queue_edit(context, row.field.pointer, text);
    context->site.preview.*row.preview = text;
    update_tab_preview(context);
}

} // namespace

void fill_website_fields(const Context& context, const Json& site) {
    fill_form_fields(context, PANEL, FIELDS, site);
    for (const PreviewField& row : PREVIEW_FIELDS) {
        const std::string text = text_at_pointer(site, row.field.pointer);
        fill_editor(context->app, PANEL + row.field.node, text);
        context->site.preview.*row.preview = text;
    }
}

void wire_website_fields(const Context& context) {
    wire_form_fields(context, PANEL, FIELDS);
    for (const PreviewField& row : PREVIEW_FIELDS)
        context->app.on_input(PANEL + row.field.node, [context, &row](const std::string& text) {
            edit_preview_field(context, row, text);
        });
}

std::string site_title(const AppContext& context) {
    return context.app.input_value(PANEL + TITLE_FIELD);
}

} // namespace Lumenfold
