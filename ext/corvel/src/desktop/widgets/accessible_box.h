#pragma once

class QString;

namespace Corvel {

class VBoxWidget;

/// Makes boxes with a click known to assistive programs as buttons, check boxes or tabs that can be
/// pressed, named by their accessible name, their first label or `words_of_wordless`; and the
/// windows of dialogs as dialogs. Any number of calls act as one.
void install_accessible_boxes();

/// What a box that shows no words does: its object name without the kind of control, and the first
/// words of the row that it stands in ("Remove Gauge"). Empty for a box with words.
QString words_of_wordless(const VBoxWidget& box);

} // namespace Corvel
