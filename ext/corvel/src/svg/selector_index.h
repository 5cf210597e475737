#pragma once

#include "svg/svg_document.h"

#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Corvel::Svg {

/// Indices into the element table, ascending; shared by all that act on the same elements.
using ElementSet = std::shared_ptr<const std::vector<std::int32_t>>;

/// Finds elements by simple CSS selectors: "#id", ".class" or a tag name. The document must
/// outlive the index.
class SelectorIndex {
public:
    explicit SelectorIndex(const SvgDocument& document);

    /// The elements that match, or null if none does. Selectors that are not simple (with a blank,
    /// ">", "," or ":") match nothing. Equal selectors give the same set.
    ElementSet match_selector(std::string_view selector) const;

private:
    using Group = std::shared_ptr<std::vector<std::int32_t>>;
    using Groups = std::unordered_map<std::string_view, Group>;

    static void add(Groups& groups, std::string_view key, std::int32_t element);
    static ElementSet find(const Groups& groups, std::string_view key);

    Groups ids_;
    Groups classes_;
    Groups names_;
};

} // namespace Corvel::Svg
