// Builds by real processes: the stand-in builder, from the search path.
#include "app_window.h"
#include "desktop/services/process.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <iostream>

namespace TestSupport {
namespace {

const std::string SITE_BUILD = "Actions Row/Build Button";
const std::string DONE = "\n\n=== Build Complete ===";
const std::string FAILED = "\n\n=== Build Failed ===";

/// An environment variable with another value for a while.
class Variable {
public:
    Variable(const char* name, const std::string& value)
        : name_(name)
        , before_(qgetenv(name)) {
        qputenv(name, QByteArray::fromStdString(value));
    }
    ~Variable() { qputenv(name_, before_); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* name_;
    QByteArray before_;
};

struct RealBuilds : testing::Test {
    AppWindow ui;
    Variable path{"PATH", FAKE_BUILDER_DIR ":" + std::string(std::getenv("PATH"))};
    Variable script{"LUMENFOLD_FAKE_BUILDER", ""};
    std::filesystem::path site = ui.dir / ".lumenfold-site";
    std::filesystem::path project = ui.dir / "p/.lumenfold-project";

    RealBuilds() {
        Corvel::install_qt_process(*ui.app);
        write_file(site, R"({"title": "S"})");
        write_file(project, R"({"slug": "p"})");
    }
    static void play(const std::string& scripts) {
        qputenv("LUMENFOLD_FAKE_BUILDER", scripts.c_str());
    }

    bool log_ends_with(const std::string& words) {
        return QTest::qWaitFor([&] { return ui.text("Output Editor").ends_with(words); }, 30'000);
    }
    bool enabled(const std::string& button) { return !ui.has_state(button, "Disabled"); }
};

TEST_F(RealBuilds, EndInTheLogAsTheyEnd) {
    struct Case {
        const char* name;
        const char* steps;
        std::string log;
    };
    const Case cases[] = {
        {"success", R"(["I\tReading", "A\tdropped", {"error": "warning"}, "E\tOdd"])",
         "Reading\nwarning\nOdd" + DONE},
        {"exit code", R"(["I\tReading", {"exit": 3}])", "Reading" + FAILED},
        {"crash", R"(["I\tReading", {"signal": 9}])",
         "Reading\n[Site] Error: lumenfold-cli did not run (expected beside this executable)." +
             FAILED},
        {"line ends", R"([{"line": "I\tdos", "end": "\r\n"}, {"line": "I\tlast", "end": ""}])",
         "dos\nlast" + DONE},
        {"no text", R"([{"bytes": [73, 9, 255, 254, 10, 128, 10]}])",
         "\xEF\xBF\xBD\xEF\xBF\xBD\n\xEF\xBF\xBD" + DONE},
    };
    ui.start({site});
    ui.click("Sidebar/Build Tab");
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        play(std::string("{\"site build\": ") + c.steps + "}");
        ui.click(SITE_BUILD);
        EXPECT_TRUE(log_ends_with(" ==="));
        EXPECT_EQ(ui.text("Output Editor"), c.log);
        EXPECT_TRUE(enabled(SITE_BUILD));
    }
    const Variable no_path("PATH", "");
    ui.click(SITE_BUILD);
    EXPECT_TRUE(log_ends_with(FAILED));
    EXPECT_EQ(ui.text("Output Editor"),
              "[Site] Error: lumenfold-cli did not run (expected beside this executable)." +
                  FAILED);
    EXPECT_TRUE(enabled(SITE_BUILD));
}

TEST_F(RealBuilds, ALongLogLeavesTheInterfaceAnswering) {
    constexpr qint64 LOOSELY = 1000; // some 100 on an idle machine
    play(R"({"site build": [{"line": "I\tagain", "times": 100000}]})");
    ui.start({site});
    ui.click("Sidebar/Build Tab");
    QElapsedTimer since;
    qint64 longest = 0;
    QTimer ticks;
    QObject::connect(&ticks, &QTimer::timeout,
                     [&] { longest = std::max(longest, since.restart()); });
    since.start();
    ticks.start(5);
    ui.click(SITE_BUILD);
    ASSERT_TRUE(QTest::qWaitFor([&] { return enabled(SITE_BUILD); }, 60'000));
    ui.advance(0); // what came last is shown
    std::cout << "  the longest time without an answer: " << longest << " ms\n";
    EXPECT_LT(longest, LOOSELY);
    const std::string log = ui.text("Output Editor");
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 100'001);
    EXPECT_TRUE(log.ends_with("again" + DONE));
}

TEST_F(RealBuilds, GoOnWhileAnotherConfigurationIsUp) {
    play(R"({"site build": ["I\tfirst", {"wait": 1500}, "I\tlast"],
             "versions": ["R\t1.2\t1.2.3\t\tpending\t1", "R\t1.1\t1.1.0\t\tnew\t1"],
             "build": ["I\tbuilt"]})");
    ui.start({site});
    ui.click("Sidebar/Build Tab");
    ui.click(SITE_BUILD);
    ui.open(project); // its versions are listed meanwhile
    ui.click("Sidebar/Versions Tab");
    ASSERT_TRUE(QTest::qWaitFor([&] { return ui.widget("version-1") != nullptr; }, 20'000));
    ui.click("Sidebar/Build Tab");
    EXPECT_FALSE(enabled("Build Panel/Build Button")) << "one build at a time";
    ASSERT_TRUE(QTest::qWaitFor([&] { return enabled("Build Panel/Build Button"); }, 20'000));
    EXPECT_EQ(ui.text("Output Editor"), "");
    ui.click("Build Panel/Build Button");
    EXPECT_TRUE(log_ends_with("built" + DONE));
    ui.row_action("config-1", "activate");
    ui.click("Sidebar/Build Tab");
    EXPECT_EQ(ui.text("Output Editor"), "first\nlast" + DONE);
}

} // namespace
} // namespace TestSupport
