#include "builder/repository/repository_script.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace TestSupport {

namespace fs = std::filesystem;

void RepositoryScript::run(const std::string& script) {
    const fs::path file = dir_ / "script";
    fs::create_directories(source_folder());
    write_file(file, "DIR='" + folder().string() +
                         "'\n. '" SOURCE_ROOT
                         "/tests/builder/repository/actions.sh'\ncd \"$DIR/source\"\n" +
                         script + "write_project\n");
    const int code = std::system(
        ("sh '" + file.string() + "' >'" + (dir_ / "said").string() + "' 2>&1").c_str());
    EXPECT_EQ(code, 0) << script << read_file(dir_ / "said");
}

std::string RepositoryScript::without_folder(std::string text) const {
    const std::string name = folder().string();
    for (std::size_t at = 0; (at = text.find(name, at)) != std::string::npos;)
        text.replace(at, name.size(), "DIR");
    return text;
}

const fs::path& use_test_home() {
    static const TempDir home;
    ::setenv("HOME", home.path().c_str(), 1);
    ::unsetenv("XDG_CONFIG_HOME");
    return home.path();
}

} // namespace TestSupport
