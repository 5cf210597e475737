#pragma once

#include "app/context/context.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Lumenfold {

/// One run of the builder as a build panel starts it.
struct BuildRun {
    std::vector<std::string> arguments; ///< behind the program's name
    std::string log_prefix;             ///< "[Site]": begins the panel's own lines
    std::string config_path;
    std::string output_editor;     ///< node path of the log
    std::string advanced_checkbox; ///< node path; asked for each line as it arrives
    std::string busy_icon;         ///< node path; shown while the builder runs
    bool* has_output = nullptr;    ///< whether the log has text; in a record that the context holds
    /// Takes the line of a tag that only this panel knows; false for any other.
    std::function<bool(char tag, std::string_view text)> own_tag;
    /// Runs last, with `running` false again.
    std::function<void()> finished;
};

/// Clears the log and starts the builder. Nothing when there is no process service.
void start_build(const Context& context, BuildRun run);

/// A build is under way, or none can be started here.
bool build_blocked(const AppContext& context);

/// Opens a folder in the system's file manager, if it exists.
void open_folder(const AppContext& context, const std::string& folder);

} // namespace Lumenfold
