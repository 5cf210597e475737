#pragma once

#include "layers/engine.h"
#include "runtime/corvel_app.h"
#include "runtime/render_cache.h"

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace Corvel {

/// The maps behind `CorvelApp`, keyed by node path unless told otherwise. Whoever changes an entry
/// that a render reads tells `cache`.
struct CorvelApp::State {
    template <class Value>
    using ByPath = std::map<std::string, Value, std::less<>>;

    Layers::LayersEngine engine;
    std::string active_theme;            ///< display name
    std::map<std::string, Theme> themes; ///< by display name
    std::string root_name;

    ByPath<GrowingText> texts;
    ByPath<std::string> sources;
    std::set<std::string> withheld_sources; ///< files that no node shows at the moment
    ByPath<std::string> hrefs;
    ByPath<std::string> datas;
    ByPath<double> heights;
    ByPath<Action> click_handlers;
    ByPath<std::string> input_values;
    std::vector<std::pair<std::string, std::string>> pending_editor_texts;
    ByPath<TextHandler> input_handlers;
    ByPath<TextHandler> scan_handlers;
    ByPath<SharedItems> options;
    ByPath<SharedText> selections;
    ByPath<TextHandler> select_handlers;
    ByPath<std::set<std::string>> node_states;
    std::set<std::string> global_states;
    double scroll_accumulator = 0;
    double viewport_height = 0; ///< rounded
    bool uses_viewport_height = false;
    std::set<std::string, std::less<>> hidden_paths;
    std::map<std::string, SharedRows> rows; ///< by list key
    std::map<std::string, RowsHandler> row_listeners;
    std::map<std::string, RowHandler> row_click_handlers;

    // What clicks mean in the tree of the last render.
    ByPath<std::string> theme_card_targets; ///< display name
    std::set<std::string, std::less<>> checkbox_paths;
    ByPath<RowTarget> row_targets;

    std::optional<RenderNode> previous_tree;
    bool previous_names_distinct = true; ///< no two siblings of it share a name
    RenderCache cache;

    bool has_option(std::string_view path, std::string_view value) const;
    const Theme* theme_in_force() const;
    void apply_theme(const std::map<std::string, ThemeValue>& values);
};

} // namespace Corvel
