#pragma once

#include "runtime/growing_text.h"

namespace Corvel {

class LogView;

/// Makes logs known to assistive technology as read-only texts of many lines. Once is enough.
void install_accessible_logs();

/// Tells assistive technology what came behind `earlier`, or that all is new.
void tell_log_changed(LogView& log, const GrowingText& earlier);

} // namespace Corvel
