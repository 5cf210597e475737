#include "app/app_context.h"

#include "app/shell/window_paths.h"

#include <algorithm>

namespace Lumenfold {

Shell::Shell(const std::string& root_path, std::vector<SectionTab> section_tabs)
    : root(root_path)
    , editor_panel(root + "/Editor Panel")
    , sidebar(editor_panel + "/Sidebar")
    , panels(editor_panel + "/Panels")
    , text_panel(root + "/Text Panel")
    , text_editor(text_panel + "/Text Editor")
    , status_bar(text_panel + "/Status Bar")
    , status_message(status_bar + "/Status Message")
    , save_button(status_bar + "/Save Button")
    , tabs(std::move(section_tabs)) {}

AppContext::AppContext(Corvel::CorvelApp& application)
    : app(application)
    , site_shell(Paths::SITE_CONFIGURATOR, {{"Website Tab", "Website Panel"},
                                            {"Projects Tab", "Projects Panel"},
                                            {"Socials Tab", "Socials Panel"},
                                            {"Policies Tab", "Policies Panel"},
                                            {"Build Tab", "Build Panel"}})
    , project_shell(Paths::PROJECT_CONFIGURATOR, {{"Project Tab", "Project Panel"},
                                                  {"Source Tab", "Source Panel"},
                                                  {"Readme Tab", "Readme Panel"},
                                                  {"License Tab", "License Panel"},
                                                  {"Topics Tab", "Topics Panel"},
                                                  {"Dependencies Tab", "Dependencies Panel"},
                                                  {"Versions Tab", "Versions Panel"},
                                                  {"Downloads Tab", "Downloads Panel"},
                                                  {"Build Tab", "Build Panel"}})
    , message_dialog{&application, Paths::MESSAGE_DIALOG}
    , confirm_dialog{&application, Paths::CONFIRM_DIALOG, {}} {}

bool site_is_open(const AppContext& context) {
    return context.active.kind == ConfigKind::Site && !context.edits.path.empty();
}

OpenConfig* active_tab_record(AppContext& context) {
    const auto found =
        std::find_if(context.open_configs.begin(), context.open_configs.end(),
                     [&](const OpenConfig& config) { return config.id == context.active.id; });
    return found == context.open_configs.end() ? nullptr : &*found;
}

} // namespace Lumenfold
