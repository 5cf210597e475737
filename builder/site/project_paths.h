#pragma once

namespace Lumenfold::Builder {

// Names of pages below a project's address.
inline constexpr const char* FIRST_PAGE = "index.html";
inline constexpr const char* LICENSE_PAGE = "license.html";
inline constexpr const char* VERSIONS_PAGE = "versions.html";

} // namespace Lumenfold::Builder
