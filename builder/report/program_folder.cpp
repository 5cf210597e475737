#include "builder/report/program_folder.h"

#include <system_error>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

fs::path program_file() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error);
}

fs::path program_folder() {
    return program_file().parent_path();
}

fs::path themes_folder() {
    const fs::path beside = program_folder() / "assets" / "corvel" / "themes";
    std::error_code error;
    return fs::is_directory(beside, error) ? beside : fs::path(LUMENFOLD_FRAMEWORK_ROOT) / "themes";
}

} // namespace Lumenfold::Builder
