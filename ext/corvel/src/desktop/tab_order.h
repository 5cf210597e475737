#pragma once

namespace Corvel {

struct ViewState;

/// Lets the Tab key go through the fields of each window in reading order. Qt's own order is that
/// in which widgets came into the window, whatever their place.
void renew_tab_order(ViewState& view);

} // namespace Corvel
