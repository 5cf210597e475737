#include "checks.h"
#include "layers/tree_paths.h"
#include "theme/theme.h"

#include <algorithm>

namespace CorvelLint {
namespace {

constexpr std::string_view THEME_PREFIX = "Theme/";

bool is_theme_key(std::string_view key) {
    const auto& keys = Corvel::default_theme();
    return std::any_of(keys.begin(), keys.end(),
                       [key](const auto& entry) { return entry.first == key; });
}

} // namespace

void check_links(const StyleTree& tree, Findings& findings) {
    tree.for_each_attribute([&](const Layers::LAttribute& attribute) {
        if (!attribute.has_link())
            return;
        const std::string& path = attribute.link_path();
        const std::string on_attribute =
            " `" + path + "` of attribute `" + Layers::full_path(attribute) + "`";
        if (attribute.cyclic())
            findings.add(tree.place_of(attribute), "cyclic link" + on_attribute);
        else if (attribute.link_target() == nullptr)
            findings.add(tree.place_of(attribute), "link" + on_attribute + " leads nowhere");
        else if (path.starts_with(THEME_PREFIX) && !is_theme_key(path.substr(THEME_PREFIX.size())))
            findings.add(tree.place_of(attribute),
                         "link" + on_attribute + " names nothing that a theme can set");
    });
}

} // namespace CorvelLint
