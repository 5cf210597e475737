#include "desktop/media/asset_paths.h"
#include "runtime/corvel_app.h"
#include "runtime/desktop_app.h"
#include "runtime/start/desktop_slots.h"
#include "runtime/start/settings_mirror.h"
#include "runtime/start/theme_directories.h"
#include "runtime/start/window_icon.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QSettings>
#include <QTest>

#include <filesystem>
#include <thread>

namespace Corvel {
namespace {

using TestSupport::TempDir;
using TestSupport::write_file;

DesktopAppConfig build_tree_config() {
    DesktopAppConfig config;
    config.framework_root = "/checkout/framework";
    config.style_dirs = {"/checkout/styles"};
    config.icon_dirs = {"/checkout/icons"};
    config.media_roots = {"/checkout/media"};
    return config;
}

TEST(AssetRoots, WithoutAnInstalledTreeTheConfigurationStays) {
    TempDir folder;
    std::filesystem::create_directories(folder / "assets/corvel/themes");
    DesktopAppConfig config = build_tree_config();
    resolve_asset_roots(config, folder.path().string());
    EXPECT_EQ(config.framework_root, "/checkout/framework");
    EXPECT_EQ(config.style_dirs, std::vector<std::string>{"/checkout/styles"});
    EXPECT_EQ(config.media_roots, std::vector<std::string>{"/checkout/media"});
}

TEST(AssetRoots, AnInstalledTreeReplacesAllDirectories) {
    for (const bool with_media : {false, true}) {
        SCOPED_TRACE(with_media);
        TempDir folder;
        const std::string base = folder.path().string();
        std::filesystem::create_directories(folder / "assets/corvel/styles");
        if (with_media)
            std::filesystem::create_directories(folder / "assets/app/media");
        DesktopAppConfig config = build_tree_config();
        resolve_asset_roots(config, base);
        EXPECT_EQ(config.framework_root, base + "/assets/corvel");
        EXPECT_EQ(config.style_dirs, std::vector<std::string>{base + "/assets/app/styles"});
        EXPECT_EQ(config.icon_dirs, std::vector<std::string>{base + "/assets/app/icons"});
        const std::vector<std::string> media = with_media
                                                   ? std::vector<std::string>{base + "/assets/app"}
                                                   : std::vector<std::string>{};
        EXPECT_EQ(config.media_roots, media);
    }
}

class SettingsTest : public testing::Test {
protected:
    void SetUp() override {
        QCoreApplication::setOrganizationName(QStringLiteral("orrinworkshop"));
        QCoreApplication::setApplicationName(QStringLiteral("Lumenfold Tests"));
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           QString::fromStdString(folder.path().string()));
        QSettings().clear();
    }
    TempDir folder;
};

TEST_F(SettingsTest, TheStoreLoadsDirectKeysOverConfiguredValues) {
    QSettings settings;
    settings.setValue(QStringLiteral("store/update.check_hours"), QStringLiteral("7"));
    settings.setValue(QStringLiteral("store/deep/key"), QStringLiteral("not loaded"));
    settings.setValue(QStringLiteral("store/number"), 12);
    settings.setValue(QStringLiteral("other"), QStringLiteral("not loaded"));
    settings.sync();
    CorvelApp app;
    app.store["update.check_hours"] = "24";
    app.store["kept"] = "yes";
    load_store(app);
    const std::map<std::string, std::string> expected{
        {"update.check_hours", "7"}, {"kept", "yes"}, {"number", "12"}};
    EXPECT_EQ(app.store, expected);
}

TEST_F(SettingsTest, AnEmptyValueRemovesTheKey) {
    CorvelApp app;
    app.store_write = write_store_key;
    app.store_set("update.skip_version", "2.1.0 \xc3\xa9");
    EXPECT_EQ(QSettings().value(QStringLiteral("store/update.skip_version")).toString(),
              QStringLiteral("2.1.0 \u00e9"));
    app.store_set("update.skip_version", "");
    EXPECT_FALSE(QSettings().contains(QStringLiteral("store/update.skip_version")));
}

TEST_F(SettingsTest, ThemeChoiceAndDirectoriesAreReadBack) {
    EXPECT_EQ(read_active_theme("Fallback"), "Fallback");
    write_active_theme("Light (maker)");
    EXPECT_EQ(read_active_theme("Fallback"), "Light (maker)");

    const ThemeSourceServices services = desktop_theme_source_services();
    EXPECT_TRUE(services.read_directories().empty());
    for (const std::vector<std::string>& directories :
         {std::vector<std::string>{"/a, b"}, {"/x", "/y/\xc3\xb6"}, {}}) {
        services.write_directories(directories);
        EXPECT_EQ(services.read_directories(), directories);
    }
}

TEST(DesktopSlots, LateWorkRunsOnThisThreadAndIsAnnounced) {
    CorvelApp app;
    install_desktop_slots(app);
    std::vector<std::string> calls;
    app.on_async_change = [&] { calls.push_back("announced"); };
    const auto main_thread = std::this_thread::get_id();
    std::thread worker([&] {
        app.post([&] {
            EXPECT_EQ(std::this_thread::get_id(), main_thread);
            calls.push_back("posted");
        });
    });
    worker.join();
    EXPECT_TRUE(calls.empty());
    app.run_after(30, [&] { calls.push_back("timer"); });
    ASSERT_TRUE(QTest::qWaitFor([&] { return calls.size() == 4; }, 2000));
    const std::vector<std::string> expected{"posted", "announced", "timer", "announced"};
    EXPECT_EQ(calls, expected);
}

TEST(WindowIcon, ComesFromAPngOrAnSvgByTheNamesEnd) {
    TempDir folder;
    QImage picture(40, 20, QImage::Format_ARGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(QString::fromStdString((folder / "mark.PNG").string()), "PNG"));
    write_file(folder / "mark.svg", R"(<svg xmlns="http://www.w3.org/2000/svg" )"
                                    R"(viewBox="0 0 8 8"><rect width="8" height="8"/></svg>)");
    set_icon_dirs({folder.path().string()});
    EXPECT_EQ(load_window_icon("mark.PNG").availableSizes().size(), 7);
    EXPECT_EQ(load_window_icon("mark").availableSizes().size(), 7);
    EXPECT_TRUE(load_window_icon("absent.png").isNull());
    EXPECT_TRUE(load_window_icon("absent").isNull());
    set_icon_dirs({});
}

} // namespace
} // namespace Corvel
