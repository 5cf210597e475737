#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Corvel::Svg {

/// An attribute of a start tag. Entities in its value are not decoded.
struct SvgAttribute {
    std::string_view name;
    std::string_view value;
    std::size_t value_start; ///< index of the value's first byte in the source
    std::size_t value_end;   ///< index just past its last byte
};

struct SvgElement {
    std::string_view name; ///< tag name with its prefix
    std::vector<SvgAttribute> attributes;
    std::vector<std::int32_t> children;
    std::int32_t parent = -1;
    std::size_t name_end = 0; ///< index just past the tag name; new attributes go here
    std::size_t start = 0;    ///< index of the "<"
    std::size_t end = 0;      ///< index just past the element; 0 if it is never closed
    std::string text;         ///< the element's own character data, CDATA included
};

/// The value of the first attribute called `name`, or `fallback`.
std::string_view attribute(const SvgElement& element, std::string_view name,
                           std::string_view fallback = {});

/// The first attribute called `name`, or null.
const SvgAttribute* find_attribute(const SvgElement& element, std::string_view name);

/// The source of an SVG document with the table of its elements in source order. Names and values
/// refer to the source, so a document stays where it was made.
struct SvgDocument {
    explicit SvgDocument(std::string source);
    SvgDocument(const SvgDocument&) = delete;
    SvgDocument& operator=(const SvgDocument&) = delete;

    const std::string text;
    std::vector<SvgElement> elements;
    /// Indices of elements that must not appear in a frame.
    std::vector<std::int32_t> dropped;
};

} // namespace Corvel::Svg
