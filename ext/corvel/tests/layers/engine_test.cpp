#include "layers/engine.h"
#include "layers/layers_support.h"
#include "support/case_file.h"

namespace Layers {
namespace {

using TestSupport::write_file;

/// The log and the tree after loads of folders: "@ path" opens a file, whose lines follow, "-> link
/// target" makes a symbolic link, and "> folder layer" loads a folder into a layer, the root if it
/// is not named.
std::string loaded(const std::string& input) {
    const TestSupport::TempDir dir;
    LogCapture log;
    LayersEngine engine;
    std::string file;
    std::istringstream lines(input);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("@ ")) {
            file = line.substr(2);
            write_file(dir / file, "");
        } else if (line.starts_with("-> ")) {
            const std::size_t blank = line.find(' ', 3);
            std::filesystem::create_symlink(line.substr(blank + 1),
                                            dir / line.substr(3, blank - 3));
        } else if (line.starts_with("> ")) {
            const std::size_t blank = std::min(line.find(' ', 2), line.size());
            engine.load_directory(dir / line.substr(2, blank - 2),
                                  line.substr(std::min(blank + 1, line.size())));
        } else {
            write_file(dir / file, TestSupport::read_file(dir / file) + line + "\n");
        }
    }
    std::string told = log.take();
    const std::string root = dir.path().string() + "/";
    for (std::size_t at; (at = told.find(root)) != std::string::npos;)
        told.erase(at, root.size());
    return told + show(engine.root());
}

TEST(Engine, LoadsFolders) {
    TestSupport::expect_cases("tests/layers/cases/folders.txt", loaded);
}

TEST(Engine, AnUnreadableFileCountsAsEmpty) {
    const TestSupport::TempDir dir;
    const std::filesystem::path file = dir / "b.lyr";
    write_file(file, "x: 1\n");
    std::filesystem::permissions(file, std::filesystem::perms::none);
    if (std::ifstream(file))
        GTEST_SKIP() << "this user may read everything";
    testing::internal::CaptureStderr();
    LayersEngine engine;
    engine.load_directory(dir.path(), "");
    EXPECT_EQ(show(engine.root()), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "read_file: Could not read file: " + file.string() + "\n");
}

} // namespace
} // namespace Layers
