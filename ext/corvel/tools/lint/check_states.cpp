#include "checks.h"
#include "layers/object_records.h"
#include "runtime/binds.h"
#include "suggestions.h"

#include <algorithm>
#include <set>

namespace CorvelLint {
namespace {

constexpr const char* FRAMEWORK_STATES =
    "Desktop, Mobile, Narrow, Medium, Maximized, ControlsHidden, Selected, Active, Checked, "
    "First, Last";

bool is_within(const Layers::LObject& object, const Layers::LObject* outer) {
    for (const Layers::LObject* o = &object; o != nullptr; o = o->parent())
        if (o == outer)
            return true;
    return false;
}

// A state that a prototype reads is there for whoever uses the prototype to set.
void add_prototypes_states(const StyleTree& tree, std::vector<std::string>& states) {
    const Layers::LLayer* const prototypes = tree.root().find_layer("Corvel");
    tree.for_each_attribute([&](const Layers::LAttribute& attribute) {
        if (attribute.parent()->as_attribute() != nullptr && prototypes != nullptr &&
            is_within(attribute, prototypes))
            Layers::all_states(attribute.name(), [&states](std::string_view state) {
                states.emplace_back(state);
                return true;
            });
    });
}

std::vector<std::string> known_states(const StyleTree& tree, const Options& options) {
    std::vector<std::string> states = split_words(FRAMEWORK_STATES);
    states.insert(states.end(), options.states.begin(), options.states.end());
    add_prototypes_states(tree, states);
    tree.for_each_layer([&](const Layers::LLayer& layer) {
        StyleTree::for_each_variant(layer, "Bind", [&](const Layers::LAttribute& attribute) {
            if (const auto* text = std::get_if<std::string>(&attribute.terminal_value()))
                for (const Corvel::BindPiece& piece : Corvel::parse_binds(*text).pieces)
                    if (!piece.state.empty())
                        states.push_back(piece.state);
        });
    });
    std::sort(states.begin(), states.end());
    states.erase(std::unique(states.begin(), states.end()), states.end());
    return states;
}

} // namespace

void check_states(const StyleTree& tree, const Options& options, Findings& findings) {
    const std::vector<std::string> known = known_states(tree, options);
    const std::string help = "if the application sets it, name it with --states";
    tree.for_each_attribute([&](const Layers::LAttribute& attribute) {
        if (attribute.parent()->as_attribute() == nullptr || !tree.is_declared(attribute))
            return;
        Layers::all_states(attribute.name(), [&](std::string_view state) {
            if (std::binary_search(known.begin(), known.end(), state))
                return true;
            const std::string near = did_you_mean(state, known);
            findings.add(tree.place_of(attribute), state,
                         "nothing sets the state `" + std::string(state) + "`",
                         near.empty() ? help : near);
            return true;
        });
    });
}

} // namespace CorvelLint
