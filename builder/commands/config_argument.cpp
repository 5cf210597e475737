#include "builder/commands/config_argument.h"

#include "site/path_text.h"

#include <system_error>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

std::optional<fs::path> config_argument(const std::string& argument, ConfigKind kind,
                                        Reporter& reporter) {
    const bool wants_site = kind == ConfigKind::Site;
    fs::path file(argument);
    std::error_code error;
    if (fs::is_directory(file, error))
        file /= wants_site ? SITE_FILE_NAME : PROJECT_FILE_NAME;
    const std::string name = path_to_utf8(file);
    if (!fs::is_regular_file(file, error)) {
        reporter.fault({}, "There is no configuration " + name + ".");
        return std::nullopt;
    }
    const ConfigKind found = classify_config(file);
    const bool is_other = found == (wants_site ? ConfigKind::Project : ConfigKind::Site);
    if (is_other) {
        reporter.fault({}, name + " is the configuration of a " +
                               (wants_site ? "project: this command takes a site's."
                                           : "site: this command takes a project's."));
        return std::nullopt;
    }
    return file;
}

} // namespace Lumenfold::Builder
