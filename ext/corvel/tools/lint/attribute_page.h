#pragma once

#include <iosfwd>

namespace CorvelLint {

/// Writes the reference page of the attributes that the framework reads, as Markdown.
void print_attributes(std::ostream& out);

} // namespace CorvelLint
