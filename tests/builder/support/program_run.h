#pragma once

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace TestSupport {

/// A program that runs beside the test, its output thrown away.
class RunningProgram {
public:
    explicit RunningProgram(const std::vector<std::string>& command) {
        std::vector<char*> arguments;
        for (const std::string& argument : command)
            arguments.push_back(const_cast<char*>(argument.c_str()));
        arguments.push_back(nullptr);
        process_ = ::fork();
        if (process_ != 0)
            return;
        if (!std::freopen("/dev/null", "w", stdout) || !std::freopen("/dev/null", "w", stderr))
            ::_exit(126);
        ::execv(arguments.front(), arguments.data());
        ::_exit(127);
    }
    ~RunningProgram() {
        if (process_ > 0)
            end(SIGKILL);
    }
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    /// Sends the signal and waits for the end. The exit code, or minus the signal that ended it.
    int end(int signal) {
        ::kill(process_, signal);
        return wait();
    }
    int wait() {
        int status = 0;
        ::waitpid(std::exchange(process_, -1), &status, 0);
        return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
    }

private:
    pid_t process_ = -1;
};

/// What a shell script prints, errors included.
inline std::string output_of(const std::string& script) {
    std::string text;
    FILE* pipe = ::popen(("exec 2>&1\n" + script).c_str(), "r");
    EXPECT_NE(pipe, nullptr);
    char block[4096];
    while (const std::size_t got = std::fread(block, 1, sizeof(block), pipe))
        text.append(block, got);
    ::pclose(pipe);
    return text;
}

} // namespace TestSupport
