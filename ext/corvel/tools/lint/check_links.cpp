#include "checks.h"
#include "layers/tree_paths.h"
#include "paths.h"
#include "suggestions.h"
#include "theme/theme.h"

#include <algorithm>

namespace CorvelLint {
namespace {

using Layers::LAttribute;

constexpr std::string_view THEME_PREFIX = "Theme/";
constexpr std::size_t LONGEST_CIRCLE = 20;

std::vector<std::string> theme_keys() {
    std::vector<std::string> keys;
    for (const auto& [key, fallback] : Corvel::default_theme())
        keys.push_back(key);
    return keys;
}

class LinkChecker {
public:
    LinkChecker(const StyleTree& tree, Findings& findings)
        : tree_(tree)
        , findings_(findings)
        , theme_keys_(theme_keys()) {}

    void check(const LAttribute& attribute) {
        const std::string& path = attribute.link_path();
        const std::string link = "link `" + path + "` of attribute `";
        const auto add = [&](const std::string& message, const std::string& help) {
            findings_.add(tree_.place_of(attribute), path, message, help);
        };
        if (attribute.cyclic())
            add("links in a circle: " + circle(attribute), "give one of them a value");
        else if (attribute.link_target() == nullptr)
            add(link + path_of(attribute) + "` leads nowhere",
                path.starts_with(THEME_PREFIX)
                    ? theme_help(path)
                    : suggest_attribute(tree_, layer_of(attribute), path));
        else if (path.starts_with(THEME_PREFIX) && !is_theme_key(path))
            add(link + path_of(attribute) + "` names nothing that a theme can set",
                theme_help(path));
    }

private:
    bool is_theme_key(std::string_view path) const {
        return std::find(theme_keys_.begin(), theme_keys_.end(),
                         path.substr(THEME_PREFIX.size())) != theme_keys_.end();
    }

    std::string theme_help(std::string_view path) const {
        const std::string near = nearest(path.substr(THEME_PREFIX.size()), theme_keys_);
        return near.empty() ? "themes set " + in_words(theme_keys_)
                            : "did you mean `Theme/" + near + "`?";
    }

    // The attribute whose link was left open closes the circle: the target of the link that it
    // would have is found as the end of the others.
    std::string circle(const LAttribute& attribute) const {
        std::string text = '`' + path_of(attribute) + '`';
        const LAttribute* stop = find(attribute);
        for (std::size_t i = 0; stop != nullptr && stop != &attribute && i < LONGEST_CIRCLE; ++i) {
            text += " -> `" + path_of(*stop) + '`';
            stop = stop->link_target();
        }
        return text + " -> `" + path_of(attribute) + '`';
    }

    const LAttribute* find(const LAttribute& attribute) const {
        const std::string& path = attribute.link_path();
        const Layers::LLayer* layer = &layer_of(attribute);
        const std::size_t slash = path.rfind('/');
        if (slash == std::string::npos) {
            for (; layer != nullptr; layer = Layers::enclosing_layer(*layer))
                if (const LAttribute* const found = layer->find_attribute(path))
                    return found;
            return nullptr;
        }
        const std::string layer_path = path.substr(0, slash);
        const Layers::LLayer* found = Layers::top_layer(*layer).find_layer(layer_path);
        if (found == nullptr)
            found = tree_.root().find_layer(layer_path);
        return found != nullptr ? found->find_attribute(path.substr(slash + 1)) : nullptr;
    }

    const StyleTree& tree_;
    Findings& findings_;
    std::vector<std::string> theme_keys_;
};

} // namespace

void check_links(const StyleTree& tree, Findings& findings) {
    LinkChecker checker(tree, findings);
    tree.for_each_attribute([&](const LAttribute& attribute) {
        if (attribute.has_link())
            checker.check(attribute);
    });
}

} // namespace CorvelLint
