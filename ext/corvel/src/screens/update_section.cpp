#include "screens/update_section.h"

#include "runtime/corvel_app.h"
#include "update/update_check.h"

#include <algorithm>
#include <memory>

namespace Corvel {
namespace {

constexpr const char* SKIP_VERSION = "update.skip_version";
constexpr int FIRST_CHECK_MS = 3000;
constexpr int LONGEST_PERIOD_HOURS = 168;
constexpr int HOUR_MS = 3600000;

/// The update dialog: its node paths and the result that it shows, on which its buttons act.
struct UpdateDialog {
    CorvelApp& app;
    UpdateSettings settings;
    std::string dialog_path;
    std::string status_path;
    std::string busy_path; ///< shown while a check that the user asked for is under way
    std::string download_path;
    std::string notes_path;
    std::string skip_path;
    std::string later_path;
    UpdateResult shown;
};

using SharedDialog = std::shared_ptr<UpdateDialog>;

SharedDialog make_dialog(CorvelApp& app, const std::string& root) {
    const std::string path = root + "/Update Dialog";
    const std::string actions = path + "/Body/Actions";
    return std::make_shared<UpdateDialog>(UpdateDialog{app,
                                                       read_update_settings(app),
                                                       path,
                                                       path + "/Body/Status",
                                                       path + "/Body/Busy Icon",
                                                       actions + "/Download Button",
                                                       actions + "/Notes Button",
                                                       actions + "/Skip Button",
                                                       actions + "/Later Button",
                                                       {}});
}

void show_update_status(UpdateDialog& dialog, const std::string& text) {
    dialog.app.set_text(dialog.status_path, text);
    dialog.app.set_visible(dialog.busy_path, false);
    for (const std::string& button : {dialog.download_path, dialog.notes_path, dialog.skip_path})
        dialog.app.set_visible(button, false);
    dialog.app.set_text(dialog.later_path, "Close");
    dialog.app.set_visible(dialog.dialog_path, true);
}

void show_update_available(UpdateDialog& dialog, const UpdateResult& result) {
    dialog.shown = result;
    dialog.app.set_text(dialog.status_path, "Version " + result.latest_version +
                                                " is available. You have " +
                                                dialog.app.app_version + ".");
    dialog.app.set_visible(dialog.busy_path, false);
    dialog.app.set_visible(dialog.download_path, !result.download_url.empty());
    dialog.app.set_visible(dialog.notes_path, !result.notes_url.empty());
    dialog.app.set_visible(dialog.skip_path, true);
    dialog.app.set_text(dialog.later_path, "Later");
    dialog.app.set_visible(dialog.dialog_path, true);
}

void take_result(UpdateDialog& dialog, const UpdateResult& result, bool manual) {
    if (!result.success) {
        if (manual)
            show_update_status(dialog, "Could not check for updates: " + result.error);
        return;
    }
    // A skipped version is shown to who asks for it.
    const bool wanted = manual || dialog.app.store_get(SKIP_VERSION) != result.latest_version;
    if (result.update_available && wanted)
        show_update_available(dialog, result);
    else if (manual)
        show_update_status(dialog, "You're up to date (" + dialog.app.app_version + ").");
}

void check_now(const SharedDialog& dialog, bool manual) {
    if (manual) {
        show_update_status(*dialog, "Checking for updates...");
        dialog->app.set_visible(dialog->busy_path, true);
    }
    check_for_update(dialog->app, dialog->settings, [dialog, manual](const UpdateResult& result) {
        take_result(*dialog, result, manual);
    });
}

void wire_dialog(const SharedDialog& dialog) {
    CorvelApp& app = dialog->app;
    const auto hide = [dialog] { dialog->app.set_visible(dialog->dialog_path, false); };
    const auto open = [dialog](const std::string& url) {
        if (dialog->app.open_url)
            dialog->app.open_url(url);
    };
    app.on_click(dialog->dialog_path + "/Titlebar/Exit Button", hide);
    app.on_click(dialog->later_path, hide);
    app.on_click(dialog->download_path, [dialog, open, hide] {
        open(dialog->shown.download_url);
        hide();
    });
    app.on_click(dialog->notes_path, [dialog, open] { open(dialog->shown.notes_url); });
    app.on_click(dialog->skip_path, [dialog, hide] {
        dialog->app.store_set(SKIP_VERSION, dialog->shown.latest_version);
        hide();
    });
}

void arm_periodic_check(const SharedDialog& dialog, int interval) {
    if (!dialog->app.run_after)
        return;
    dialog->app.run_after(interval, [dialog, interval] {
        check_now(dialog, false);
        arm_periodic_check(dialog, interval);
    });
}

void arm_schedule(const SharedDialog& dialog) {
    if (!dialog->app.run_after)
        return;
    dialog->app.run_after(FIRST_CHECK_MS, [dialog] { check_now(dialog, false); });
    if (dialog->settings.check_hours > 0)
        arm_periodic_check(dialog,
                           std::min(dialog->settings.check_hours, LONGEST_PERIOD_HOURS) * HOUR_MS);
}

} // namespace

void install_update_section(CorvelApp& app, const std::string& root, const std::string& window) {
    const std::string section = root + "/" + window + "/Settings Menu/App Settings/Version Section";
    const std::string check_button = section + "/Actions/Check Updates Button";
    app.set_text(section + "/Current Version",
                 app.app_version.empty() ? "Development Build" : "Version " + app.app_version);
    const SharedDialog dialog = make_dialog(app, root);
    app.set_visible(dialog->dialog_path, false);
    app.set_visible(dialog->busy_path, false);
    const bool checks = !dialog->settings.manifest_url.empty();
    app.set_visible(section + "/Update Source", !checks);
    if (!checks) {
        app.set_visible(check_button, false);
        return;
    }
    wire_dialog(dialog);
    app.on_click(check_button, [dialog] { check_now(dialog, true); });
    arm_schedule(dialog);
}

} // namespace Corvel
