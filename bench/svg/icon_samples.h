#pragma once

#include <string>

/// The text of one of the application's own icons.
std::string shipped_icon(const std::string& name);

/// An icon of some 6 KB whose frames hold 40 animated numbers: six matrices and four opacities.
std::string busy_icon();
