#pragma once

#include <string_view>

namespace Lumenfold::Builder {

/// The quote in which an author stresses something, with its kind in the first line: "[!NOTE]".
struct AlertKind {
    std::string_view mark;  ///< in capitals; authors may write small letters too
    std::string_view name;  ///< as the page's classes call it
    std::string_view title; ///< as readers see it
};

/// The kind that a quote's first line names, if it names one and nothing else stands there.
const AlertKind* alert_kind(std::string_view quote);

} // namespace Lumenfold::Builder
