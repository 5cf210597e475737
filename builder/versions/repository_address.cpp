#include "builder/versions/repository_address.h"

#include "builder/documents/addresses.h"

#include <cstddef>

namespace Lumenfold::Builder {
namespace {

/// How a platform addresses a file: "T" stands for the tag, "P" for the path.
struct Shape {
    std::string_view platform; ///< lowercase, found in what the user typed or in the host
    std::string_view file;
    std::string_view folder;
};

constexpr Shape SHAPES[] = {
    {"github", "/blob/T/P", "/tree/T/P"},
    {"gitlab", "/-/blob/T/P", "/-/tree/T/P"},
    {"gitea", "/src/tag/T/P", "/src/tag/T/P"},
    {"forgejo", "/src/tag/T/P", "/src/tag/T/P"},
    {"codeberg", "/src/tag/T/P", "/src/tag/T/P"},
    {"gogs", "/src/T/P", "/src/T/P"},
    {"bitbucket", "/src/T/P", "/src/T/P"},
    {"sourcehut", "/tree/T/item/P", "/tree/T/item/P"},
    {"sr.ht", "/tree/T/item/P", "/tree/T/item/P"},
    {"cgit", "/tree/P?h=T", "/tree/P?h=T"},
};
constexpr Shape OTHER = {"", "/blob/T/P", "/tree/T/P"};

std::string lowered(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
    return lower;
}

const Shape& shape_of(std::string_view name) {
    const std::string lower = lowered(name);
    for (const Shape& shape : SHAPES)
        if (lower.find(shape.platform) != std::string::npos)
            return shape;
    return OTHER;
}

std::string_view trimmed_url(std::string_view url) {
    while (url.ends_with('/'))
        url.remove_suffix(1);
    if (url.ends_with(".git"))
        url.remove_suffix(4);
    return url;
}

} // namespace

std::string repository_address(const RepositoryAddress& repository, std::string_view path,
                               bool is_folder) {
    const std::string scheme = address_scheme(repository.url);
    if (scheme != "http" && scheme != "https")
        return {};
    const Shape* shape = &shape_of(repository.platform);
    if (shape == &OTHER)
        shape = &shape_of(repository.url);
    std::string address(trimmed_url(repository.url));
    for (const char c : is_folder ? shape->folder : shape->file)
        if (c == 'T')
            address += repository.tag.empty() ? "HEAD" : percent_encoded(repository.tag);
        else if (c == 'P')
            address += percent_encoded(path);
        else
            address += c;
    return address;
}

} // namespace Lumenfold::Builder
