#include "app/project_panels/source_documents.h"

#include "app/context/app_context.h"
#include "app/editing/edit_queue.h"
#include "app/editing/editor_text.h"
#include "app/editing/file_editor.h"
#include "app/editing/saving.h"
#include "app/forms/dialog_frame.h"
#include "app/project_panels/project_files.h"
#include "runtime/corvel_app.h"
#include "site/path_text.h"

#include <nlohmann/json.hpp>

#include <filesystem>

namespace Lumenfold {
namespace {

constexpr const char* CREATE_ROW = "/Create Row";
constexpr const char* CREATE_BUTTON = "/Create Row/Create Button";

/// Offers to make the missing file, once there is a source root to make it in.
void refresh_create_row(const Context& context, const SourceDocument& document) {
    Corvel::CorvelApp& app = context->app;
    app.set_visible(document.panel + CREATE_ROW,
                    !document.editor.found && !context->project.source_path.empty());
    const std::string name = trimmed_value(*context, document.path_field);
    app.set_text(document.panel + CREATE_BUTTON + "/Label",
                 "Create " + (name.empty() ? document.default_name : name));
}

void load_document(const Context& context, SourceDocument& document, const std::string& name) {
    document.editor.problem = context->project.manifest_problem;
    load_file_editor(context, document.editor, resolve_source(*context, name));
    refresh_create_row(context, document);
}

/// False if the file could not be made, which is told.
bool create_empty_file(const Context& context, const std::string& file) {
    const std::filesystem::path path = path_from_utf8(file);
    std::error_code ignored;
    return std::filesystem::exists(path, ignored) || save_text(context, path, "");
}

void create_document(const Context& context, SourceDocument& document) {
    if (!anything_is_open(*context) || document.editor.found ||
        context->project.source_path.empty())
        return;
    std::string name = trimmed_value(*context, document.path_field);
    const bool is_default = name.empty();
    if (is_default)
        name = document.default_name;
    if (!create_empty_file(context, resolve_source(*context, name)))
        return;
    if (is_default) {
        queue_manifest_edit(context, document.pointer, name);
        fill_editor(context->app, document.path_field, name);
    }
    load_document(context, document, name);
}

/// What tells the README from the license.
struct DocumentKind {
    const char* panel;
    const char* name; ///< in the names of its nodes
    const char* key;  ///< of the file's name in the manifest's "build"
    const char* default_name;
    const char* missing_text;
    SourceDocument ProjectState::*document;
};
constexpr DocumentKind README{"/Readme Panel", "Readme",           "readme",
                              "README.md",     "README not found", &ProjectState::readme};
constexpr DocumentKind LICENSE{
    "/License Panel",      "License", "license", "LICENSE", "License file not found",
    &ProjectState::license};

void wire(const Context& context, const DocumentKind& kind) {
    Corvel::CorvelApp& app = context->app;
    SourceDocument& document = context->project.*kind.document;
    const std::string panel = context->project_configurator.panels + kind.panel;
    const std::string name = kind.name;
    document.panel = panel;
    document.path_field = panel + "/Path Form/" + name + " Path Field";
    document.pointer = std::string("/build/") + kind.key;
    document.default_name = kind.default_name;
    wire_file_editor(context, document.editor, panel + "/" + name + " Status Bar",
                     panel + "/" + name + " Editor", kind.missing_text);
    app.on_input(document.path_field, [context, &document](const std::string& text) {
        queue_manifest_edit(context, document.pointer, text);
        load_document(context, document, text);
    });
    app.on_click(panel + CREATE_BUTTON,
                 [context, &document] { create_document(context, document); });
}

void fill(const Context& context, const DocumentKind& kind) {
    SourceDocument& document = context->project.*kind.document;
    const std::string name = text_at(*context->project.edited_build, kind.key);
    fill_editor(context->app, document.path_field, name);
    load_document(context, document, name);
}

} // namespace

void wire_readme(const Context& context) {
    wire(context, README);
}

void wire_license(const Context& context) {
    wire(context, LICENSE);
}

void fill_readme(const Context& context, const Json&) {
    fill(context, README);
}

void fill_license(const Context& context, const Json&) {
    fill(context, LICENSE);
}

} // namespace Lumenfold
