#include "desktop/desktop_view.h"
#include "desktop/media/asset_paths.h"
#include "desktop/services/async_change.h"
#include "desktop/services/file_pick.h"
#include "desktop/services/http.h"
#include "desktop/services/process.h"
#include "desktop/services/uploader.h"
#include "layers/engine.h"
#include "runtime/corvel_app.h"
#include "runtime/desktop_app.h"
#include "runtime/layer_plan.h"
#include "screens/theme_sources.h"
#include "start/desktop_slots.h"
#include "start/media_warmup.h"
#include "start/screenshot_run.h"
#include "start/settings_mirror.h"
#include "start/theme_directories.h"
#include "start/window_icon.h"

#include <QApplication>
#include <QFont>
#include <QFontDatabase>
#include <QWidget>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>

namespace Corvel {
namespace {

void name_application(const DesktopAppConfig& config) {
    QCoreApplication::setOrganizationName(QString::fromStdString(config.organization));
    QCoreApplication::setApplicationName(QString::fromStdString(config.application_name));
    QCoreApplication::setApplicationVersion(QString::fromStdString(config.version));
    if (!config.desktop_file_name.empty())
        QGuiApplication::setDesktopFileName(QString::fromStdString(config.desktop_file_name));
}

std::string choose_theme(const DesktopAppConfig& config) {
    if (qEnvironmentVariableIsSet("CORVEL_THEME"))
        return qEnvironmentVariable("CORVEL_THEME").toStdString();
    return read_active_theme(config.default_theme);
}

/// False if there is no theme, or with words on the error stream if a folder cannot be read.
bool load_assets(CorvelApp& app, const DesktopAppConfig& config, const std::string& theme) {
    const std::string& root = config.framework_root;
    try {
        return app.load_assets(root + "/themes", root + "/styles", theme, config.style_dirs);
    } catch (const std::filesystem::filesystem_error& error) {
        std::fprintf(stderr, "Corvel: cannot read %s: %s.\n", error.path1().string().c_str(),
                     error.code().message().c_str());
        return false;
    }
}

void put_update_settings(CorvelApp& app, const DesktopAppConfig& config) {
    if (config.manifest_url.empty())
        return;
    app.store["update.manifest_url"] = config.manifest_url;
    app.store["update.platform_key"] =
        config.platform_key.empty() ? default_platform_key() : config.platform_key;
    app.store["update.check_hours"] = std::to_string(config.update_check_hours);
}

void install_services(CorvelApp& app) {
    install_qt_http(app);
    install_qt_uploader(app);
    install_qt_file_pick(app);
    install_qt_process(app);
    install_desktop_slots(app);
}

void set_asset_directories(const DesktopAppConfig& config) {
    std::vector<std::string> icon_dirs = config.icon_dirs;
    icon_dirs.push_back(config.framework_root + "/icons");
    set_icon_dirs(std::move(icon_dirs));
    set_media_dirs(config.media_roots);
}

/// The typeface that the interface was drawn for, where it is installed.
void choose_typeface() {
    const QString family = QStringLiteral("Inter");
    if (!QFontDatabase::hasFamily(family))
        return;
    QFont font = QApplication::font();
    font.setFamily(family);
    QApplication::setFont(font);
}

void set_window_icon(const DesktopAppConfig& config) {
    if (config.icon.empty())
        return;
    const QIcon icon = load_window_icon(config.icon);
    if (!icon.isNull())
        QApplication::setWindowIcon(icon);
}

int size_from_environment(const char* name, int fallback) {
    return qEnvironmentVariableIsSet(name) ? std::atoi(qgetenv(name).constData()) : fallback;
}

void show_window(QWidget& window, const DesktopAppConfig& config) {
    // The application draws its own title bar and rounded corners.
    window.setWindowFlag(Qt::FramelessWindowHint);
    window.setAttribute(Qt::WA_TranslucentBackground);
    const int width = size_from_environment("CORVEL_WIDTH", 1000);
    const int height = size_from_environment("CORVEL_HEIGHT", 700);
    window.setMinimumSize(std::max(1, std::min(width, 360)), std::max(1, std::min(height, 240)));
    window.resize(width, height);
    window.setWindowTitle(QString::fromStdString(config.window_title));
    window.show();
}

/// Tells the application of each time that it comes to the front, as long as it has a window.
void announce_activation(CorvelApp& app, QWidget& window) {
    QObject::connect(qApp, &QGuiApplication::applicationStateChanged, &window,
                     [&app](Qt::ApplicationState state) {
                         if (state != Qt::ApplicationActive || !app.on_activate)
                             return;
                         app.on_activate();
                         notify_async_change(app);
                     });
}

} // namespace

int run_desktop(int argc, char** argv, const DesktopAppConfig& given) {
    QApplication application(argc, argv);
    // QApplication takes the locale of the environment; a decimal comma would break every number
    // that the styles, themes and images hold.
    std::setlocale(LC_NUMERIC, "C");

    choose_typeface();

    DesktopAppConfig config = given;
    resolve_asset_roots(config);
    name_application(config);
    const std::string theme = choose_theme(config);

    CorvelApp app;
    if (!load_assets(app, config, theme)) {
        std::fputs("Corvel: failed to initialize (themes/styles/theme).\n", stderr);
        return 1;
    }
    app.add_global_state("Desktop");
    app.app_version = config.version;
    put_update_settings(app, config);
    install_services(app);
    load_store(app);
    app.store_write = write_store_key;

    (config.build ? config.build : build_app)(app);
    install_theme_sources(app, desktop_theme_source_services());
    // Again, now that the themes of the user's directories are known. The slot that persists a
    // choice is filled only afterwards: the start chooses, it does not save.
    app.set_theme(theme);
    app.theme_write = write_active_theme;

    set_asset_directories(config);
    set_window_icon(config);
    // The window goes before the view, the view before the application object.
    DesktopView view(app);
    const std::unique_ptr<QWidget> window(view.build());
    announce_activation(app, *window);
    show_window(*window, config);
    if (holds_kind(app.engine().root(), NodeKind::Video))
        start_media_warmup();
    arm_screenshot_run(window.get(), [&view] { view.finish(); });
    return QApplication::exec();
}

} // namespace Corvel
