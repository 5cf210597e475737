#include "app/projects/source_documents.h"

#include "app/app_context.h"
#include "app/editing/edit_queue.h"
#include "app/editing/editor_text.h"
#include "app/editing/file_editor.h"
#include "app/panels/dialog_frame.h"
#include "app/projects/project_files.h"
#include "runtime/corvel_app.h"
#include "site/path_text.h"

#include <filesystem>

namespace Lumenfold {
namespace {

constexpr const char* CREATE_ROW = "/Create Row";
constexpr const char* CREATE_BUTTON = "/Create Row/Create Button";

/// Offers to make the missing file, once there is a source root to make it in.
void refresh_create_row(const Context& context, const SourceDocument& document) {
    Corvel::CorvelApp& app = context->app;
    app.set_visible(document.panel + CREATE_ROW,
                    !document.editor->found && !context->project->source_path.empty());
    const std::string name = trimmed_value(*context, document.path_field);
    app.set_text(document.panel + CREATE_BUTTON + "/Label",
                 "Create " + (name.empty() ? document.default_name : name));
}

void load_document(const Context& context, SourceDocument& document, const std::string& name) {
    load_file_editor(context->app, *document.editor, resolve_source(*context, name));
    refresh_create_row(context, document);
}

void create_empty_file(const std::string& file) {
    const std::filesystem::path path = path_from_utf8(file);
    std::error_code ignored;
    if (std::filesystem::exists(path, ignored))
        return;
    std::filesystem::create_directories(path.parent_path(), ignored);
    write_text_file(path, "");
}

void create_document(const Context& context, SourceDocument& document) {
    if (context->edits.path.empty() || document.editor->found ||
        context->project->source_path.empty())
        return;
    std::string name = trimmed_value(*context, document.path_field);
    if (name.empty()) {
        name = document.default_name;
        queue_manifest_edit(context, document.pointer, name);
        fill_editor(context->app, document.path_field, name);
    }
    create_empty_file(resolve_source(*context, name));
    load_document(context, document, name);
}

void wire_document(const Context& context, SourceDocument& document, const std::string& guard) {
    wire_file_editor(context->app, document.editor);
    context->project_shell.guards.push_back({guard, document.editor});
    SourceDocument* shown = &document;
    context->app.on_input(document.path_field, [context, shown](const std::string& text) {
        queue_manifest_edit(context, shown->pointer, text);
        load_document(context, *shown, text);
    });
    context->app.on_click(document.panel + CREATE_BUTTON,
                          [context, shown] { create_document(context, *shown); });
}

SourceDocument make_document(const std::string& panel, const std::string& name,
                             const std::string& key, const std::string& default_name,
                             const std::string& missing_text) {
    SourceDocument document;
    document.panel = panel;
    document.path_field = panel + "/Path Form/" + name + " Path Field";
    document.pointer = "/build/" + key;
    document.default_name = default_name;
    document.editor = make_file_editor(panel + "/" + name + " Status Bar",
                                       panel + "/" + name + " Editor", missing_text);
    return document;
}

} // namespace

void wire_source_documents(const Context& context) {
    ProjectState& state = *context->project;
    const std::string& panels = context->project_shell.panels;
    state.readme = make_document(panels + "/Readme Panel", "Readme", "readme", "README.md",
                                 "README not found");
    state.license = make_document(panels + "/License Panel", "License", "license", "LICENSE",
                                  "License file not found");
    wire_document(context, state.readme, "README editor");
    wire_document(context, state.license, "License editor");
}

void fill_source_documents(const Context& context, const Json& build) {
    ProjectState& state = *context->project;
    for (const auto& [document, key] :
         {std::pair(&state.readme, "readme"), std::pair(&state.license, "license")}) {
        const std::string name = text_at(build, key);
        fill_editor(context->app, document->path_field, name);
        load_document(context, *document, name);
    }
}

void reload_source_document(const Context& context, SourceDocument& document) {
    load_document(context, document, context->app.input_value(document.path_field));
}

} // namespace Lumenfold
