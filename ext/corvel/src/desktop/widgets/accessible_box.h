#pragma once

namespace Corvel {

/// Makes boxes with a click known to assistive programs as buttons or check boxes that can be
/// pressed, named by their accessible name, their first label or their object name. Any number of
/// calls act as one.
void install_accessible_boxes();

} // namespace Corvel
