#pragma once

#include "runtime/corvel_app.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace Plain {

using Strings = std::map<std::string, std::string>;

/// What an application holds, in the plainest form.
struct State {
    std::string root_name = "App";
    Strings texts, sources, hrefs, datas;
    std::map<std::string, double> heights;
    std::map<std::string, std::vector<Corvel::ComboItem>> options;
    Strings selections;
    std::map<std::string, std::set<std::string>> node_states;
    std::set<std::string> global_states;
    std::set<std::string> hidden_paths;
    std::map<std::string, std::vector<Corvel::ListEntry>> rows;
    double viewport_height = 0;
};

/// A render and what clicks mean in it.
struct Render {
    Corvel::RenderNode tree;
    std::map<std::string, std::string> theme_card_targets;
    std::map<std::string, Corvel::RowTarget> row_targets;
    std::set<std::string> checkbox_paths;
    bool uses_viewport_height = false;
    std::set<std::string> visited; ///< every path met, hidden ones and nodes left out included
};

/// Renders with nothing remembered and nothing shared: the rules one by one, for comparison with
/// the renderer that remembers.
Render render(Corvel::CorvelApp& app, const State& state);

/// The patches from `before` to `after` by names alone.
std::vector<Corvel::RenderPatch> diff(const Corvel::RenderNode& before,
                                      const Corvel::RenderNode& after);

} // namespace Plain
