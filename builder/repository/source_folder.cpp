#include "builder/repository/source_folder.h"

#include "site/config_files.h"
#include "site/path_text.h"

#include <nlohmann/json.hpp>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

fs::path source_folder_of(const Json& project, const fs::path& project_file) {
    const fs::path folder = project_file.parent_path();
    const auto build = project.find("build");
    const std::string path =
        build != project.end() ? text_at(*build, "source_path") : std::string();
    if (!path.empty())
        return folder / path_from_utf8(path);
    return is_occupied(folder / MANIFEST_FILE_NAME) ? folder : fs::path();
}

} // namespace Lumenfold::Builder
