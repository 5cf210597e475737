#include "paths.h"

#include "layers/tree_paths.h"
#include "suggestions.h"

namespace CorvelLint {
namespace {

/// A path as far as it leads.
struct Walked {
    const Layers::LLayer* layer;
    std::string_view done; ///< with the slash behind it
    std::string_view rest;
};

Walked walk(const Layers::LLayer& start, std::string_view path) {
    Walked walked{&start, path.substr(0, 0), path};
    for (;;) {
        const std::size_t slash = walked.rest.find('/');
        if (slash == std::string_view::npos)
            return walked;
        const Layers::LLayer* const next = walked.layer->find_layer(walked.rest.substr(0, slash));
        if (next == nullptr)
            return walked;
        walked.layer = next;
        walked.rest.remove_prefix(slash + 1);
        walked.done = path.substr(0, path.size() - walked.rest.size());
    }
}

std::string mended(const Layers::LLayer& start, std::string_view path, bool is_attribute) {
    const Walked walked = walk(start, path);
    const std::size_t slash = std::min(walked.rest.find('/'), walked.rest.size());
    const std::string_view wrong = walked.rest.substr(0, slash);
    const bool is_last = slash == walked.rest.size();
    const std::string right =
        nearest(wrong, is_last && is_attribute ? attribute_names(*walked.layer)
                                               : layer_names(*walked.layer));
    if (right.empty())
        return {};
    const std::string whole =
        std::string(walked.done) + right + std::string(walked.rest.substr(slash));
    return "did you mean `" + whole + "`?";
}

std::string mended_from_both(const StyleTree& tree, const Layers::LLayer& from,
                             std::string_view path, bool is_attribute) {
    const std::string near = mended(Layers::top_layer(from), path, is_attribute);
    return near.empty() ? mended(tree.root(), path, is_attribute) : near;
}

// The nearest layer to the root that bears a name, by its path; empty if there is none.
std::string find_by_name(const StyleTree& tree, std::string_view name) {
    std::string found;
    tree.for_each_layer([&](const Layers::LLayer& layer) {
        if (layer.name() != name || !tree.is_declared(layer))
            return;
        const std::string path = path_of(layer);
        if (found.empty() || path.size() < found.size())
            found = path;
    });
    return found;
}

} // namespace

std::string suggest_layer(const StyleTree& tree, const Layers::LLayer& from,
                          std::string_view path) {
    const std::string elsewhere = find_by_name(tree, path.substr(path.rfind('/') + 1));
    if (!elsewhere.empty())
        return "paths begin in the window or in the root: write `" + elsewhere + "`";
    return mended_from_both(tree, from, path, false);
}

std::string suggest_attribute(const StyleTree& tree, const Layers::LLayer& from,
                              std::string_view path) {
    if (path.find('/') != std::string_view::npos)
        return mended_from_both(tree, from, path, true);
    std::vector<std::string> in_sight;
    for (const Layers::LLayer* layer = &from; layer != nullptr;
         layer = Layers::enclosing_layer(*layer)) {
        const std::vector<std::string> names = attribute_names(*layer);
        in_sight.insert(in_sight.end(), names.begin(), names.end());
    }
    const std::string near = did_you_mean(path, in_sight);
    return near.empty() ? "no layer around has an attribute of this name; write a path, or write a "
                          "text in quotes"
                        : near;
}

} // namespace CorvelLint
