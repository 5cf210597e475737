#include "desktop/media/asset_paths.h"
#include "runtime/corvel_app.h"
#include "runtime/desktop_app.h"
#include "start/desktop_slots.h"
#include "start/settings_mirror.h"
#include "start/theme_directories.h"
#include "start/window_icon.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDesktopServices>
#include <QSettings>
#include <QTest>
#include <QUrl>

#include <thread>

namespace Corvel {

void build_app(CorvelApp&) {} // which the program's entry, in the same library, refers to

namespace {

using Texts = std::vector<std::string>;

/// Settings in a folder of the test's own.
class Start : public testing::Test {
protected:
    Start() {
        QCoreApplication::setApplicationName(QStringLiteral("Tests"));
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, base);
        QSettings().clear();
    }
    TestSupport::TempDir folder;
    const QString base = QString::fromStdString(folder.path().string());
    CorvelApp app;
};

TEST_F(Start, TheStoreIsMirroredInTheSettings) {
    QSettings settings;
    for (const char* key : {"store/update.check_hours", "store/number", "store/deep/key", "other"})
        settings.setValue(QLatin1String(key), 7);
    settings.sync();
    app.store = {{"update.check_hours", "24"}, {"kept", "yes"}};
    load_store(app);
    const std::map<std::string, std::string> expected{
        {"update.check_hours", "7"}, {"kept", "yes"}, {"number", "7"}};
    EXPECT_EQ(app.store, expected) << "direct keys only, over the given values";
    app.store_write = write_store_key;
    app.store_set("number", "2.1.0 \xc3\xa9");
    EXPECT_EQ(QSettings().value(QStringLiteral("store/number")).toString(),
              QStringLiteral("2.1.0 \u00e9"));
    app.store_set("number", "");
    EXPECT_FALSE(QSettings().contains(QStringLiteral("store/number")));
}

TEST_F(Start, ThemeChoiceAndDirectoriesAreReadBack) {
    EXPECT_EQ(read_active_theme("Fallback"), "Fallback");
    write_active_theme("Light (maker)");
    EXPECT_EQ(read_active_theme("Fallback"), "Light (maker)");
    const ThemeSourceServices services = desktop_theme_source_services();
    EXPECT_TRUE(services.read_directories().empty());
    for (const Texts& directories : {Texts{"/a, b"}, Texts{"/x", "/y/\xc3\xb6"}, Texts{}}) {
        services.write_directories(directories);
        EXPECT_EQ(services.read_directories(), directories);
    }
}

TEST_F(Start, LateWorkRunsOnThisThreadAndIsAnnounced) {
    install_desktop_slots(app);
    Texts calls;
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
    EXPECT_EQ(calls, (Texts{"posted", "announced", "timer", "announced"}));
}

/// Takes the addresses that would be given to the system.
class OpenedUrls : public QObject {
    Q_OBJECT
public:
    OpenedUrls() {
        for (const char* scheme : SCHEMES)
            QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "take");
    }
    ~OpenedUrls() override {
        for (const char* scheme : SCHEMES)
            QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
    }
    OpenedUrls(const OpenedUrls&) = delete;
    OpenedUrls& operator=(const OpenedUrls&) = delete;

    QList<QUrl> taken;

public Q_SLOTS:
    void take(const QUrl& url) { taken.append(url); }

private:
    static constexpr const char* SCHEMES[] = {"file", "http",       "https", "mailto",
                                              "ftp",  "javascript", "ssh",   "data"};
};

TEST_F(Start, OnlyPathsAndWebAddressesAreGivenToTheSystem) {
    install_desktop_slots(app);
    OpenedUrls opened;
    for (const char* name : {"plain", "a#b", "what?", "%41", "50% & more", "\xc3\xa9 x"}) {
        const std::string path = (folder / name).string();
        app.open_url("file://" + path);
        ASSERT_EQ(opened.taken.size(), 1) << name;
        EXPECT_EQ(opened.taken.takeFirst().toLocalFile().toStdString(), path);
    }
    for (const char* url : {"http://a.example/x?y#z", "https://b.example/%41", "HTTPS://b.example/",
                            "mailto:a@b.example"}) {
        app.open_url(url);
        ASSERT_EQ(opened.taken.size(), 1) << url;
        EXPECT_EQ(opened.taken.takeFirst(), QUrl(QLatin1String(url)));
    }
    for (const char* url : {"", "ftp://a.example/", "javascript:alert(1)", "ssh://a.example",
                            "/etc", "file:/etc", "data:text/html,x", "a.example", "http//x"}) {
        app.open_url(url);
        EXPECT_TRUE(opened.taken.isEmpty()) << url;
    }
}

TEST_F(Start, TheWindowIconComesFromAPngOrAnSvgByTheNamesEnd) {
    QImage picture(40, 20, QImage::Format_ARGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(base + QLatin1String("/mark.PNG"), "PNG"));
    TestSupport::write_file(folder / "mark.svg",
                            R"(<svg xmlns="http://www.w3.org/2000/svg" )"
                            R"(viewBox="0 0 8 8"><rect width="8" height="8"/></svg>)");
    set_icon_dirs({folder.path().string()});
    for (const char* name : {"mark.PNG", "mark"})
        EXPECT_EQ(load_window_icon(name).availableSizes().size(), 7) << name;
    for (const char* name : {"absent.png", "absent"})
        EXPECT_TRUE(load_window_icon(name).isNull()) << name;
}

} // namespace
} // namespace Corvel

#include "start_test.moc"
