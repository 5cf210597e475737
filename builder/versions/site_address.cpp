#include "builder/versions/site_address.h"

#include "builder/documents/addresses.h"

#include <algorithm>
#include <cstddef>

namespace Lumenfold::Builder {
namespace {

/// Names such as "page.html"; "1.2" is a version's folder.
bool has_extension(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return dot != std::string_view::npos && dot + 1 < name.size() &&
           std::any_of(name.begin() + static_cast<std::ptrdiff_t>(dot), name.end(),
                       [](char c) { return (c | 0x20) >= 'a' && (c | 0x20) <= 'z'; });
}

} // namespace

std::optional<std::string> address_within_site(std::string_view address,
                                               std::string_view site_url) {
    while (site_url.ends_with('/'))
        site_url.remove_suffix(1);
    if (site_url.empty() || !address.starts_with(site_url))
        return std::nullopt;
    const std::string_view rest = address.substr(site_url.size());
    if (rest.empty() || rest.front() == '#' || rest.front() == '?')
        return "/" + std::string(rest);
    return rest.front() == '/' ? std::optional<std::string>(rest) : std::nullopt;
}

std::string site_file_address(std::string_view address) {
    const AddressParts parts = split_address(address);
    std::string file(parts.path);
    if (file.ends_with('/'))
        file += "index.html";
    else if (!has_extension(parts.path.substr(parts.path.rfind('/') + 1)))
        file += "/index.html";
    return file.append(address.substr(parts.path.size()));
}

} // namespace Lumenfold::Builder
