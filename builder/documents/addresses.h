#pragma once

#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// An address as a browser reads it: without blanks around it, line ends and tabs taken out.
std::string trimmed_address(std::string_view address);

/// The scheme of an absolute address in lowercase ("https"); empty for a relative one.
std::string address_scheme(std::string_view address);

/// Whether a link with this address may stand in a page: relative, or of a scheme that leads to a
/// document or a person (http, https, mailto, tel, ftp, irc, ircs, xmpp). Nothing that runs script
/// ever passes.
bool is_safe_link(std::string_view address);

/// Whether the address leads to another host ("https://...", "//...").
bool is_web_address(std::string_view address);

/// An address in its parts: "path?query#fragment", the marks left out.
struct AddressParts {
    std::string_view path;
    std::string_view query;    ///< with its "?"; may be empty
    std::string_view fragment; ///< without the "#"
    bool has_fragment = false;
};
AddressParts split_address(std::string_view address);

/// The text with its percent escapes resolved.
std::string percent_decoded(std::string_view text);

/// A path or fragment with every character escaped that means something in an address: "%", "#",
/// "?" and blanks.
std::string percent_encoded(std::string_view path);

} // namespace Lumenfold::Builder
