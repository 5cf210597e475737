#pragma once

#include "app/shell.h"

#include <cstddef>

namespace Lumenfold {

/// Publishes the members of the active configuration; the bar shows for a family only.
void build_family_tabs(const Context& context);

/// Wires the switch among the members.
void wire_family_tabs(const Context& context);

/// Marks the tab of the member shown.
void mark_member_tab(const Context& context);

/// Brings another member up, after its predecessor's edits are written.
void show_member(const Context& context, std::size_t member);

/// Carries the active configuration's members and logo over to its tab, after a change of them.
void update_active_members(const Context& context);

} // namespace Lumenfold
