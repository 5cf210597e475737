#include "builder/commands/version_commands.h"

#include "builder/commands/version_table.h"
#include "builder/report/interruption.h"
#include "builder/versions/build_versions.h"
#include "site/path_text.h"

#include <ostream>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

bool build_project(const fs::path& project_file, const std::string& only_label,
                   Reporter& reporter) {
    std::size_t lines = 0;
    const bool fine = build_versions(project_file, only_label, [&](const Message& message) {
        lines += message.severity == Severity::Advanced ? 0 : 1;
        reporter.say(message);
    });
    if (fine && lines == 0 && !is_interrupted())
        reporter.info("Nothing waits to be built.");
    return fine;
}

bool print_versions(const fs::path& project_file, bool porcelain, std::ostream& out,
                    Reporter& reporter) {
    VersionList list = list_versions(project_file);
    out << (porcelain ? version_records(list.rows) : version_table(list.rows)) << std::flush;
    // The reader knows which project was asked for.
    for (Message& message : list.messages) {
        if (message.file == path_to_utf8(project_file))
            message.file.clear();
        reporter.say(message);
    }
    if (list.rows.empty() && list.messages.empty() && !porcelain)
        reporter.info("No versions yet. Tag the project's repository (X.Y.Z) to list them here.");
    return reporter.faults() == 0;
}

} // namespace Lumenfold::Builder
