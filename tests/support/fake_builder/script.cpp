#include "support/fake_builder/script.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <csignal>
#include <iostream>
#include <thread>

namespace FakeBuilder {

using Json = nlohmann::json;

namespace {

void print_line(const Json& step) {
    const std::string line = step.at("line").get<std::string>() + step.value("end", "\n");
    for (int times = step.value("times", 1); times > 0; --times)
        std::cout << line;
}

void print_bytes(const Json& bytes) {
    for (const Json& byte : bytes)
        std::cout.put(static_cast<char>(byte.get<int>()));
}

void play_step(const Json& step) {
    if (step.contains("line"))
        print_line(step);
    if (step.contains("bytes"))
        print_bytes(step["bytes"]);
    if (!step.contains("line") && !step.contains("bytes"))
        std::cout.flush(); // before anything that others can notice the moment of
    if (step.contains("error"))
        std::cerr << step["error"].get<std::string>() << std::endl;
    if (step.contains("wait"))
        std::this_thread::sleep_for(std::chrono::milliseconds(step["wait"].get<int>()));
    if (step.contains("signal"))
        std::raise(step["signal"].get<int>());
}

} // namespace

int play_script(const Json& script) {
    for (const Json& step : script) {
        if (step.is_string())
            std::cout << step.get<std::string>() << '\n';
        else if (step.contains("exit"))
            return step["exit"].get<int>();
        else
            play_step(step);
    }
    return 0;
}

} // namespace FakeBuilder
