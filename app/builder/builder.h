#pragma once

namespace Lumenfold {

/// The program that builds sites and lists versions.
inline constexpr const char* BUILDER = "lumenfold-cli";

/// For the user, when it could not be started or crashed.
inline constexpr const char* BUILDER_DID_NOT_RUN =
    "lumenfold-cli did not run (expected beside this executable).";

} // namespace Lumenfold
