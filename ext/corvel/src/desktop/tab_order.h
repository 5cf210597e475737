#pragma once

class QWidget;

namespace Corvel {

struct DNode;
struct ViewState;

/// The first field below `top` in reading order that can take text or a choice; null without one.
QWidget* first_field(const ViewState& view, const DNode& top);

/// Lets the Tab key go through the fields and buttons of each window in reading order. Qt's own
/// order is that in which widgets came into the window, whatever their place.
void renew_tab_order(ViewState& view);

} // namespace Corvel
