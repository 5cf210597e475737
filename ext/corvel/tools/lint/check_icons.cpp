#include "checks.h"
#include "runtime/corvel_app.h"
#include "suggestions.h"
#include "text_files.h"

#include <algorithm>

namespace CorvelLint {
namespace {

std::vector<std::string> icon_names(const Options& options) {
    std::vector<std::string> names;
    for (const std::filesystem::path& folder : options.icons)
        for (const std::filesystem::path& file : files_below(folder, ".svg"))
            names.push_back(file.lexically_relative(folder).replace_extension().string());
    return names;
}

} // namespace

void check_icons(const StyleTree& tree, const Options& options, Findings& findings) {
    if (options.icons.empty())
        return;
    const std::vector<std::string> icons = icon_names(options);
    tree.for_each_layer([&](const Layers::LLayer& layer) {
        const Corvel::NodeKind kind = Corvel::node_kind_of(&layer);
        if (kind != Corvel::NodeKind::Icon && kind != Corvel::NodeKind::Editor)
            return;
        StyleTree::for_each_variant(layer, "Source", [&](const Layers::LAttribute& attribute) {
            const Layers::LAttribute& end = attribute.terminal();
            const std::string* const icon = std::get_if<std::string>(&end.value());
            if (icon != nullptr && !icon->empty() && tree.is_declared(end) &&
                std::find(icons.begin(), icons.end(), *icon) == icons.end())
                findings.add(tree.place_of(end), *icon, "no icon `" + *icon + "`",
                             did_you_mean(*icon, icons));
        });
    });
}

} // namespace CorvelLint
