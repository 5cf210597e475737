#pragma once

#include <QString>

#include <string>
#include <vector>

namespace Corvel {

/// Where icons are looked for, first match wins. Process-wide; set once at start-up.
void set_icon_dirs(std::vector<std::string> dirs);
/// Where relative media paths are looked for, first match wins. Process-wide; set once at start-up.
void set_media_dirs(std::vector<std::string> dirs);

/// The text of the icon `name` (without extension), from the first icon directory whose
/// `name`.svg opens; empty if there is none.
QString load_icon_text(const std::string& name);

/// The path of the file `name` (with extension) in the first icon directory that has it; empty if
/// there is none.
std::string resolve_icon_path(const std::string& name);

/// An absolute path itself if the file exists, a relative one in the first media directory that
/// has it; empty if there is none.
QString resolve_media_path(const std::string& path);

} // namespace Corvel
