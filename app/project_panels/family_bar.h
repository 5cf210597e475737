#pragma once

#include "app/context/context.h"

#include <cstddef>
#include <string>

namespace Lumenfold {

/// Publishes the members of the active configuration and marks the one shown; the bar shows for a
/// family only.
void build_family_tabs(const Context& context);

/// Wires the switch among the members.
void wire_family_tabs(const Context& context);

/// Brings another member up, after its predecessor's edits are written.
void show_member(const Context& context, std::size_t member);

/// Shows the active configuration's members on its tab and the family bar, after a change of them.
void update_active_members(const Context& context);

/// Gives the member shown another logo.
void set_member_logo(const Context& context, const std::string& logo);

} // namespace Lumenfold
