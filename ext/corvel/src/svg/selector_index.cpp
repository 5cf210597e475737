#include "svg/selector_index.h"

#include "svg/svg_values.h"

namespace Corvel::Svg {

SelectorIndex::SelectorIndex(const SvgDocument& document) {
    std::int32_t index = 0;
    for (const SvgElement& element : document.elements) {
        add(names_, element.name, index);
        if (const SvgAttribute* id = find_attribute(element, "id"))
            add(ids_, id->value, index);
        for (const std::string_view name : split(attribute(element, "class"), ' '))
            add(classes_, name, index);
        ++index;
    }
}

ElementSet SelectorIndex::match_selector(std::string_view selector) const {
    selector = trim(selector);
    if (selector.empty() || selector.find_first_of(" >,:") != std::string_view::npos)
        return nullptr;
    switch (selector.front()) {
    case '#':
        return find(ids_, selector.substr(1));
    case '.':
        return find(classes_, selector.substr(1));
    default:
        return find(names_, selector);
    }
}

void SelectorIndex::add(Groups& groups, std::string_view key, std::int32_t element) {
    Group& group = groups[key];
    if (!group)
        group = std::make_shared<std::vector<std::int32_t>>();
    if (group->empty() || group->back() != element)
        group->push_back(element);
}

ElementSet SelectorIndex::find(const Groups& groups, std::string_view key) {
    const auto found = groups.find(key);
    return found == groups.end() ? nullptr : found->second;
}

} // namespace Corvel::Svg
