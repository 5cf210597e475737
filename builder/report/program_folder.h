#pragma once

#include <filesystem>

namespace Lumenfold::Builder {

/// The running program's file, links resolved; empty if the system does not tell.
std::filesystem::path program_file();
/// The folder of the running program, links resolved; empty if the system does not tell.
std::filesystem::path program_folder();

/// The folder of the themes that are shipped: "assets/corvel/themes" beside the program, else that
/// of the sources it was built from.
std::filesystem::path themes_folder();

} // namespace Lumenfold::Builder
