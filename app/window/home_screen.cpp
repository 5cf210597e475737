#include "app/window/home_screen.h"

#include "app/context/app_context.h"
#include "app/context/window_paths.h"
#include "app/editing/editor_text.h"
#include "app/forms/dialog_frame.h"
#include "app/tabs/opening.h"
#include "runtime/corvel_app.h"
#include "site/config_files.h"
#include "site/new_site.h"
#include "site/path_text.h"

namespace Lumenfold {

namespace {

const std::string OPEN_BUTTON = Paths::APP_PANE + "/Home/Open Button";
const std::string NEW_WEBSITE_BUTTON = Paths::APP_PANE + "/Home/New Website Button";
const std::string TITLE_EDITOR = Paths::NEW_WEBSITE_DIALOG + "/Body/Title Editor";
const std::string LOCATION_EDITOR =
    Paths::NEW_WEBSITE_DIALOG + "/Body/Location Row/Location Editor";
const std::string BROWSE_BUTTON = Paths::NEW_WEBSITE_DIALOG + "/Body/Location Row/Browse Button";
const std::string CREATE_BUTTON = Paths::NEW_WEBSITE_DIALOG + "/Body/Actions/Create Button";

constexpr const char* FAILURE_TITLE = "Couldn't Create Site";
constexpr const char* DEFAULT_TITLE = "My Site";

void pick_configuration(const Context& context) {
    Corvel::PickRequest request;
    request.mode = "file";
    request.title = "Open Configuration";
    request.filter = "Lumenfold Configs (*.lumenfold-site *.lumenfold-project);;All Files (*)";
    request.show_hidden = true; // the names begin with a dot
    context->app.pick_file(request, [context](const std::string& path) {
        if (!path.empty())
            open_config(context, path);
    });
}

void show_new_website_dialog(const Context& context) {
    fill_editor(context->app, TITLE_EDITOR, DEFAULT_TITLE);
    fill_editor(context->app, LOCATION_EDITOR, "");
    context->app.set_visible(Paths::NEW_WEBSITE_DIALOG, true);
}

void pick_location(const Context& context) {
    Corvel::PickRequest request;
    request.mode = "dir";
    request.title = "Choose Location";
    context->app.pick_file(request, [context](const std::string& path) {
        if (!path.empty())
            fill_editor(context->app, LOCATION_EDITOR, path);
    });
}

void create_website(const Context& context) {
    std::string title = trimmed_value(*context, TITLE_EDITOR);
    if (title.empty())
        title = DEFAULT_TITLE;
    const std::string location = trimmed_value(*context, LOCATION_EDITOR);
    if (location.empty()) {
        context->message_dialog.show(FAILURE_TITLE, "Choose a location for the new site.");
        return;
    }
    const std::filesystem::path folder = path_from_input(location);
    std::string error;
    if (!create_site(folder, title, &error)) {
        context->message_dialog.show(FAILURE_TITLE, error);
        return;
    }
    context->app.set_visible(Paths::NEW_WEBSITE_DIALOG, false);
    open_config(context, path_to_utf8(folder / SITE_FILE_NAME));
}

} // namespace

void wire_home_screen(const Context& context) {
    Corvel::CorvelApp& app = context->app;
    app.on_click(OPEN_BUTTON, [context] { pick_configuration(context); });
    wire_dialog_frame(context, Paths::NEW_WEBSITE_DIALOG);
    app.on_click(NEW_WEBSITE_BUTTON, [context] { show_new_website_dialog(context); });
    app.on_click(BROWSE_BUTTON, [context] { pick_location(context); });
    app.on_click(CREATE_BUTTON, [context] { create_website(context); });
}

} // namespace Lumenfold
