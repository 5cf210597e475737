#pragma once

#include "support/temp_dir.h"

#include <filesystem>
#include <string>

namespace TestSupport {

/// A folder in which a script of git actions was run: `actions.sh` tells what it may say.
class RepositoryScript {
public:
    /// Fails the test, with what the shell said, if the script fails.
    explicit RepositoryScript(const std::string& script) { run(script); }

    /// Goes on in the same folder.
    void run(const std::string& script);

    std::filesystem::path project_file() const { return dir_ / "project" / ".lumenfold-project"; }
    std::filesystem::path source_folder() const { return dir_ / "source"; }
    const std::filesystem::path& folder() const { return dir_.path(); }

    /// `text` with DIR in the place of the folder's name.
    std::string without_folder(std::string text) const;

private:
    TempDir dir_;
};

/// Gives libgit2 a home folder of the tests' own. Called before anything of it.
const std::filesystem::path& use_test_home();

} // namespace TestSupport
