#pragma once

#include <QString>

#include <string>

namespace Corvel {

class CorvelApp;

/// Fills the `uploader` slot: lets the user choose a file, which blocks in a nested event loop,
/// and sends it as one part of a form (RFC 7578). An upload has no time limit.
void install_qt_uploader(CorvelApp& app);

/// The file dialog's name filter for an `accept` list of MIME types.
QString filter_for_accept(const std::string& accept);

} // namespace Corvel
