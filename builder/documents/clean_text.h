#pragma once

#include "builder/documents/document.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// A document's bytes as text that may go into a page: valid UTF-8 without control characters other
/// than line ends and tabs. What is no UTF-8, and NUL, becomes U+FFFD; other controls and a byte
/// order mark at the beginning are left out. Line ends stay, so lines keep their numbers.
class CleanText {
public:
    explicit CleanText(std::string_view bytes);
    CleanText(const CleanText&) = delete;
    CleanText& operator=(const CleanText&) = delete;

    std::string_view text() const { return text_; }
    /// The line (1-based) of the first byte that is no UTF-8; 0 if there is none.
    std::size_t invalid_line() const { return invalid_line_; }

private:
    void copy_cleaned(std::string_view bytes, std::size_t clean);

    std::string copy_; ///< empty when the bytes are clean as they are
    std::string_view text_;
    std::size_t invalid_line_ = 0;
};

/// Tells that a document is no UTF-8, if it is not.
void tell_invalid(const CleanText& text, const DocumentSource& source, Messages& messages);

} // namespace Lumenfold::Builder
