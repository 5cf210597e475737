#pragma once

#include "findings.h"
#include "options.h"
#include "style_tree.h"

namespace CorvelLint {

// The checks, one source file each. All go on after the first problem.

/// Every style file parses.
void check_syntax(const Options& options, Findings& findings);

/// Nothing was left out while the styles were loaded.
void check_limits(const StyleTree& tree, Findings& findings);

/// Values have the kind that their attribute reads, and are one of the few that it takes; colours
/// are colours; every attribute means something to the framework, or to another attribute that
/// links to it by name. A root layer that links lead into is a table of values, which need not all
/// be in use.
void check_values(const StyleTree& tree, Findings& findings);

/// Every state is one that the framework, a "Bind" or the application sets.
void check_states(const StyleTree& tree, const Options& options, Findings& findings);

/// Every attribute link leads to an attribute; those to "Theme" name a key that themes can set.
void check_links(const StyleTree& tree, Findings& findings);

/// Every "<<" finds its layer in time, and no child loses the kind that it inherits.
void check_inheritance(const StyleTree& tree, Findings& findings);

/// Every piece of a "Bind" has a known form, every list is one that the application fills.
void check_binds(const StyleTree& tree, const Options& options, Findings& findings);

/// Every icon that an Icon or an Editor names exists. Not run without icon folders.
void check_icons(const StyleTree& tree, const Options& options, Findings& findings);

/// Every icon takes the tint somewhere, and what it animates is played.
void check_icon_files(const Options& options, Findings& findings);

/// Every theme file parses, its keys are those that styles read, its colours are colours, and all
/// files have the same keys.
void check_themes(const Options& options, Findings& findings);

} // namespace CorvelLint
