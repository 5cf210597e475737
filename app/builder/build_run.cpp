#include "app/builder/build_run.h"

#include "app/builder/build_buttons.h"
#include "app/builder/builder.h"
#include "app/builder/porcelain.h"
#include "app/context/app_context.h"
#include "app/context/build_state.h"
#include "runtime/corvel_app.h"
#include "site/path_text.h"

#include <filesystem>
#include <utility>

namespace Lumenfold {
namespace {

void append_log(AppContext& context, const BuildRun& run, std::string_view line) {
    if (*run.has_output)
        context.app.append_text(run.output_editor, "\n");
    context.app.append_text(run.output_editor, std::string(line));
    *run.has_output = *run.has_output || !line.empty();
}

void take_line(AppContext& context, const BuildRun& run, const std::string& written) {
    const std::string line = without_colours(written);
    const std::optional<PorcelainRecord> record = parse_porcelain(line);
    const char tag = record ? record->tag : '\0';
    if (tag == 'I' || tag == 'E') {
        append_log(context, run, record->text);
    } else if (tag == 'A') {
        if (context.app.is_checked(run.advanced_checkbox))
            append_log(context, run, record->text);
    } else if (!record || !run.own_tag || !run.own_tag(tag, record->text)) {
        append_log(context, run, line);
    }
}

void take_exit(AppContext& context, const BuildRun& run, int code) {
    if (code == -1)
        append_log(context, run, run.log_prefix + " Error: " + BUILDER_DID_NOT_RUN);
    append_log(context, run, "");
    append_log(context, run, code == 0 ? "=== Build Complete ===" : "=== Build Failed ===");
    context.build.running = false;
    refresh_build_buttons(context);
    context.app.set_visible(run.busy_icon, false);
    run.finished();
}

} // namespace

bool build_blocked(const AppContext& context) {
    return context.build.running || !context.app.process;
}

void start_build(const Context& context, BuildRun run) {
    if (!context->app.process)
        return;
    context->build.running = true;
    refresh_build_buttons(*context);
    context->app.set_visible(run.busy_icon, true);
    *run.has_output = false;
    context->app.set_text(run.output_editor, "");
    if (context->app.is_checked(run.advanced_checkbox))
        append_log(*context, run, run.log_prefix + " Config: " + run.config_path);

    std::vector<std::string> argv{BUILDER};
    argv.insert(argv.end(), run.arguments.begin(), run.arguments.end());
    const auto shared = std::make_shared<const BuildRun>(std::move(run));
    context->app.process(
        argv, [context, shared](const std::string& line) { take_line(*context, *shared, line); },
        [context, shared](int code) { take_exit(*context, *shared, code); });
}

void open_folder(const AppContext& context, const std::string& folder) {
    std::error_code ignored;
    if (!folder.empty() && context.app.open_url &&
        std::filesystem::is_directory(path_from_utf8(folder), ignored))
        context.app.open_url("file://" + folder);
}

} // namespace Lumenfold
