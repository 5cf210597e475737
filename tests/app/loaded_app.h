#pragma once

#include "layers/log.h"
#include "runtime/corvel_app.h"
#include "runtime/desktop_app.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace TestSupport {

/// An application object with the shipped styles and themes, not wired yet. Whatever the styles
/// log fails the test.
inline std::unique_ptr<Corvel::CorvelApp> load_app() {
    const Layers::LogSink earlier =
        Layers::set_log_sink([](const std::string& line) { ADD_FAILURE() << "logged: " << line; });
    auto app = std::make_unique<Corvel::CorvelApp>();
    const std::string root = SOURCE_ROOT;
    const bool loaded = app->load_assets(root + "/ext/corvel/themes", root + "/ext/corvel/styles",
                                         "", {root + "/styles"});
    Layers::set_log_sink(earlier);
    if (!loaded)
        throw std::runtime_error("no theme loads");
    app->add_global_state("Desktop");
    return app;
}

/// Wires the application, as at a start with these files.
inline void build_with_files(Corvel::CorvelApp& app,
                             const std::vector<std::filesystem::path>& files) {
    std::string lines;
    for (const std::filesystem::path& file : files)
        lines += file.string() + "\n";
    ::setenv("LUMENFOLD_DEV_OPEN", lines.c_str(), 1);
    Corvel::build_app(app);
    ::unsetenv("LUMENFOLD_DEV_OPEN");
}

/// Copies the example site's folder and returns its configuration.
inline std::filesystem::path copy_example(const std::filesystem::path& folder) {
    std::filesystem::copy(std::string(SOURCE_ROOT) + "/examples/tidewater", folder,
                          std::filesystem::copy_options::recursive);
    return folder / ".lumenfold-site";
}

} // namespace TestSupport
