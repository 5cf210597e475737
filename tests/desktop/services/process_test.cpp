#include "desktop/services/process.h"
#include "runtime/corvel_app.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QTest>
#include <QTimer>

#include <optional>
#include <string>
#include <vector>

using namespace Corvel;

namespace {

constexpr int patience_ms = 10000;

class Process : public testing::Test {
protected:
    Process() {
        install_qt_process(app);
        app.on_async_change = [this] { ++notices; };
    }

    void start(const std::vector<std::string>& argv) {
        lines.clear();
        exits.clear();
        notices = 0;
        app.process(
            argv, [this](const std::string& line) { lines.push_back(line); },
            [this](int code) { exits.push_back(code); });
    }

    bool wait_for_exit() {
        return QTest::qWaitFor([this] { return !exits.empty(); }, patience_ms);
    }

    CorvelApp app;
    std::vector<std::string> lines;
    std::vector<int> exits;
    int notices = 0;
};

std::vector<std::string> shell(const std::string& script) {
    return {"/bin/sh", "-c", script};
}

bool is_running(const std::string& pid) {
    return QFile::exists(QString::fromStdString("/proc/" + pid + "/cwd")) &&
           !QFile::symLinkTarget(QString::fromStdString("/proc/" + pid + "/exe")).isEmpty();
}

} // namespace

TEST_F(Process, LinesAndExitCodes) {
    struct Case {
        const char* what;
        std::vector<std::string> argv;
        std::vector<std::string> lines;
        int code;
    };
    const std::vector<Case> cases = {
        {"no output", shell("exit 0"), {}, 0},
        {"exit code", shell("echo out; exit 3"), {"out"}, 3},
        {"line ends", shell(R"(printf 'a\r\nb\n\nc\rd\n')"), {"a", "b", "", "c\rd"}, 0},
        {"no final line feed", shell("printf 'a\\nrest'"), {"a", "rest"}, 0},
        {"only a carriage return at the end", shell("printf 'a\\r'"), {"a\r"}, 0},
        {"bytes", shell(R"(printf '\377\000\001\n')"), {std::string("\xff\0\1", 3)}, 0},
        {"both streams in order",
         shell("echo one; echo two >&2; echo three"),
         {"one", "two", "three"},
         0},
        {"arguments as they are",
         {"/bin/sh", "-c", "echo \"$1|$2\"", "x", "a b", "$HOME'\"\xC3\xA9"},
         {"a b|$HOME'\"\xC3\xA9"},
         0},
        {"from the search path", {"echo", "found"}, {"found"}, 0},
        {"crash with output", shell("echo last; kill -SEGV $$"), {"last"}, -1},
        {"crash in the middle of a line", shell("printf half; kill -KILL $$"), {"half"}, -1},
        {"cannot start", {"/nowhere/at/all"}, {}, -1},
        {"not on the search path", {"no-such-program-here"}, {}, -1},
        {"a folder", {"/tmp/"}, {}, -1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        start(c.argv);
        EXPECT_TRUE(wait_for_exit());
        QTest::qWait(1);
        EXPECT_EQ(lines, c.lines);
        EXPECT_EQ(exits, std::vector<int>{c.code}) << "told exactly once";
        EXPECT_GE(notices, 1);
    }
}

TEST_F(Process, NothingToStartIsToldAtOnce) {
    start({});
    EXPECT_EQ(exits, std::vector<int>{-1});
    app.process({}, nullptr, nullptr);
}

TEST_F(Process, ANoisyProgramCostsOneNoticeForEachRead) {
    start(shell("seq 100000"));
    ASSERT_TRUE(wait_for_exit());
    ASSERT_EQ(lines.size(), 100000U);
    EXPECT_EQ(lines.front(), "1");
    EXPECT_EQ(lines[54320], "54321");
    EXPECT_EQ(lines.back(), "100000");
    EXPECT_LT(notices, 2000);
}

TEST_F(Process, HandlersMayBeAbsent) {
    bool ended = false;
    app.process(shell("echo x; printf y"), nullptr, [&](int) { ended = true; });
    app.process(shell("echo x"), nullptr, nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] { return ended; }, patience_ms));
}

TEST_F(Process, AHandlerMayRunAnEventLoopUntilTheProgramIsGone) {
    std::vector<std::string> order;
    app.process(
        shell("printf 'a\\nb\\nc\\n'; echo d; printf e"),
        [&](const std::string& line) {
            order.push_back(line);
            if (line == "a") {
                QEventLoop loop;
                QTimer::singleShot(300, &loop, &QEventLoop::quit);
                loop.exec();
            }
        },
        [&](int code) { order.push_back("exit " + std::to_string(code)); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return order.size() == 6; }, patience_ms));
    EXPECT_EQ(order, (std::vector<std::string>{"a", "b", "c", "d", "e", "exit 0"}));
}

TEST_F(Process, AProgramRunningAtQuitIsKilledAndNobodyHearsOfIt) {
    start(shell("echo $$; exec sleep 60"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return !lines.empty(); }, patience_ms));
    const std::string pid = lines.front();
    ASSERT_TRUE(is_running(pid));
    const int notices_before = notices;
    QTimer::singleShot(0, QCoreApplication::instance(), &QCoreApplication::quit);
    QCoreApplication::exec();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !is_running(pid); }, patience_ms));
    EXPECT_EQ(lines.size(), 1U);
    EXPECT_TRUE(exits.empty());
    EXPECT_EQ(notices, notices_before);
}

TEST_F(Process, ASiblingOfTheApplicationComesBeforeTheSearchPath) {
    const std::filesystem::path beside =
        QCoreApplication::applicationDirPath().toStdString() + std::string("/services-test-tool");
    const std::string name = "services-test-tool";
    EXPECT_EQ(resolve_program(name).toStdString(), name) << "left to the search path";

    std::filesystem::create_directory(beside);
    EXPECT_EQ(resolve_program(name).toStdString(), name) << "a folder is no program";
    std::filesystem::remove(beside);

    TestSupport::write_file(beside, "#!/bin/sh\n");
    EXPECT_EQ(resolve_program(name).toStdString(), name) << "not executable";
    std::filesystem::permissions(beside, std::filesystem::perms::owner_all);
    EXPECT_EQ(resolve_program(name).toStdString(), beside.string());
    EXPECT_EQ(resolve_program("./" + name).toStdString(), "./" + name);
    EXPECT_EQ(resolve_program("x\\" + name).toStdString(), "x\\" + name);
    std::filesystem::remove(beside);
}
