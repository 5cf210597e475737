#include "checks.h"
#include "runtime/corvel_app.h"

#include <algorithm>

namespace CorvelLint {
namespace {

bool exists(const std::string& icon, const std::vector<std::filesystem::path>& folders) {
    return std::any_of(folders.begin(), folders.end(), [&](const std::filesystem::path& folder) {
        return std::filesystem::is_regular_file(folder / (icon + ".svg"));
    });
}

} // namespace

void check_icons(const StyleTree& tree, const Options& options, Findings& findings) {
    if (options.icons.empty())
        return;
    tree.for_each_layer([&](const Layers::LLayer& layer) {
        const Corvel::NodeKind kind = Corvel::node_kind_of(&layer);
        if (kind != Corvel::NodeKind::Icon && kind != Corvel::NodeKind::Editor)
            return;
        StyleTree::for_each_variant(layer, "Source", [&](const Layers::LAttribute& attribute) {
            const Layers::LAttribute& end = terminal_attribute(attribute);
            const std::string* const icon = std::get_if<std::string>(&end.value());
            if (icon != nullptr && !icon->empty() && !exists(*icon, options.icons))
                findings.add(tree.place_of(end), "no icon `" + *icon + "`");
        });
    });
}

} // namespace CorvelLint
