#pragma once

#include "app/shell.h"

#include <cstddef>
#include <string>

namespace Lumenfold {

/// Publishes the members of the active configuration; the bar shows for a family only.
void build_family_tabs(const Context& context);

/// Wires the switch among the members.
void wire_family_tabs(const Context& context);

/// Marks the tab of the member shown.
void mark_member_tab(const Context& context);

/// Brings another member up, after its predecessor's edits are written.
void show_member(const Context& context, std::size_t member);

/// Carries the active configuration's members and logo over to its tab and the family bar, after a
/// change of them.
void update_active_members(const Context& context);

/// Gives the member shown another logo, or the same file with new content.
void set_member_logo(const Context& context, const std::string& logo);

} // namespace Lumenfold
