#include "app/context/app_context.h"

#include "app/context/window_paths.h"

#include <algorithm>
#include <utility>

namespace Lumenfold {

namespace {

template <class Configs>
auto find_id(Configs& configs, const std::string& id) {
    return std::find_if(configs.begin(), configs.end(),
                        [&](const OpenConfig& config) { return config.id == id; });
}

} // namespace

AppContext::AppContext(Corvel::CorvelApp& application, ConfiguratorParts site_parts,
                       ConfiguratorParts project_parts)
    : app(application)
    , site_configurator(std::move(site_parts))
    , project_configurator(std::move(project_parts))
    , message_dialog{&application, Paths::MESSAGE_DIALOG}
    , confirm_dialog{&application, Paths::CONFIRM_DIALOG, {}} {}

OpenConfig* find_config(AppContext& context, const std::string& id) {
    const auto found = find_id(context.open_configs, id);
    return found == context.open_configs.end() ? nullptr : &*found;
}

const OpenConfig& active_config(const AppContext& context) {
    static const OpenConfig none;
    const auto found = find_id(context.open_configs, context.active_id);
    return found == context.open_configs.end() ? none : *found;
}

bool site_is_open(const AppContext& context) {
    return active_config(context).kind == ConfigKind::Site && anything_is_open(context);
}

bool anything_is_open(const AppContext& context) {
    return !context.edits.path.empty();
}

} // namespace Lumenfold
