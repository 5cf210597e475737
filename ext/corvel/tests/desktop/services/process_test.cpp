#include "desktop/services/process.h"
#include "runtime/corvel_app.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QTest>
#include <QTimer>

#include <string>
#include <vector>

using namespace Corvel;

namespace {

using Lines = std::vector<std::string>;

Lines shell(const std::string& script) {
    return {"/bin/sh", "-c", script};
}

bool is_running(const std::string& pid) {
    return !QFile::symLinkTarget(QString::fromStdString("/proc/" + pid + "/exe")).isEmpty();
}

class Process : public testing::Test {
protected:
    Process() {
        install_qt_process(app);
        app.on_async_change = [this] { ++notices; };
    }

    void start(const Lines& argv) {
        lines.clear();
        exits.clear();
        notices = 0;
        const auto on_line = [this](const std::string& line) {
            lines.push_back(line);
            if (while_on_line)
                while_on_line();
        };
        stop = app.process(argv, on_line, [this](int code) {
            exits.push_back(code);
            lines_at_exit = lines.size();
        });
    }
    bool ends() {
        return QTest::qWaitFor([this] { return !exits.empty(); }, 10000);
    }

    CorvelApp app;
    Lines lines;
    std::vector<int> exits;
    std::size_t lines_at_exit = 0;
    int notices = 0;
    std::function<void()> while_on_line;
    CorvelApp::Action stop;
};

} // namespace

TEST_F(Process, NothingIsHeardOfOneThatWasStopped) {
    start(shell("echo begun; sleep 30; echo late"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return !lines.empty(); }, 10000));
    stop();
    stop();
    QTest::qWait(300);
    EXPECT_EQ(lines, Lines{"begun"});
    EXPECT_TRUE(exits.empty());
}

TEST_F(Process, LinesAndExitCodes) {
    const struct {
        const char* what;
        Lines argv;
        Lines lines;
        int code;
    } cases[] = {
        {"nothing to start", {}, {}, -1},
        {"no output", shell("exit 0"), {}, 0},
        {"exit code", shell("echo out; exit 3"), {"out"}, 3},
        {"line ends", shell(R"(printf 'a\r\nb\n\nc\rd\n')"), {"a", "b", "", "c\rd"}, 0},
        {"no final line feed", shell("printf 'a\\nrest'"), {"a", "rest"}, 0},
        {"bytes", shell(R"(printf '\377\000\001\n')"), {std::string("\xff\0\1", 3)}, 0},
        {"both streams", shell("echo one; echo two >&2; echo three"), {"one", "two", "three"}, 0},
        {"arguments as they are", {"echo", "a b", "$HOME'\"\xC3\xA9"}, {"a b $HOME'\"\xC3\xA9"}, 0},
        {"crash with output", shell("echo last; kill -SEGV $$"), {"last"}, -1},
        {"crash in the middle of a line", shell("printf half; kill -KILL $$"), {"half"}, -1},
        {"cannot start", {"/nowhere/at/all"}, {}, -1},
        {"not on the search path", {"no-such-program-here"}, {}, -1},
        {"a folder", {"/tmp/"}, {}, -1},
    };
    app.process(shell("echo x"), nullptr, nullptr); // handlers may be absent
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        start(c.argv);
        EXPECT_TRUE(ends());
        QTest::qWait(1);
        EXPECT_EQ(lines, c.lines);
        EXPECT_EQ(exits, std::vector<int>{c.code}) << "told exactly once";
        EXPECT_TRUE(notices > 0 || c.argv.empty());
    }
}

TEST_F(Process, ANoisyProgramCostsOneNoticeForEachRead) {
    start(shell("seq 100000"));
    ASSERT_TRUE(ends());
    ASSERT_EQ(lines.size(), 100000U);
    for (const int line : {1, 54321, 100000})
        EXPECT_EQ(lines[std::size_t(line - 1)], std::to_string(line));
    EXPECT_LT(notices, 2000);
}

TEST_F(Process, AHandlerMayRunAnEventLoopUntilTheProgramIsGone) {
    while_on_line = [this] {
        while_on_line = nullptr;
        QEventLoop loop;
        QTimer::singleShot(300, &loop, &QEventLoop::quit);
        loop.exec();
    };
    start(shell("printf 'a\\nb\\nc\\n'; echo d; printf e"));
    EXPECT_TRUE(ends());
    EXPECT_EQ(lines, (Lines{"a", "b", "c", "d", "e"}));
    EXPECT_EQ(lines_at_exit, 5U);
}

TEST_F(Process, AProgramRunningAtQuitIsKilledAndNobodyHearsOfIt) {
    start(shell("echo $$; exec sleep 60"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return !lines.empty(); }, 10000));
    const std::string pid = lines.front();
    ASSERT_TRUE(is_running(pid));
    const int notices_before = notices;
    QTimer::singleShot(0, QCoreApplication::instance(), &QCoreApplication::quit);
    QCoreApplication::exec();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !is_running(pid); }, 10000));
    EXPECT_EQ(lines.size(), 1U);
    EXPECT_TRUE(exits.empty());
    EXPECT_EQ(notices, notices_before);
}

TEST_F(Process, ASiblingOfTheApplicationComesBeforeTheSearchPath) {
    const std::string name = "services-test-tool";
    const std::filesystem::path beside =
        QCoreApplication::applicationDirPath().toStdString() + "/" + name;
    std::filesystem::create_directory(beside);
    EXPECT_EQ(resolve_program(name).toStdString(), name) << "a folder is no program";
    std::filesystem::remove(beside);
    TestSupport::write_file(beside, "#!/bin/sh\n");
    EXPECT_EQ(resolve_program(name).toStdString(), name) << "not executable";
    std::filesystem::permissions(beside, std::filesystem::perms::owner_all);
    EXPECT_EQ(resolve_program(name).toStdString(), beside.string());
    for (const std::string& path : {"./" + name, "x\\" + name})
        EXPECT_EQ(resolve_program(path).toStdString(), path);
    std::filesystem::remove(beside);
}
