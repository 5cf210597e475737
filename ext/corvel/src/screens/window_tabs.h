#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Corvel {

class CorvelApp;

/// One tab and the panel that it shows.
struct TabEntry {
    std::string tab_path;   ///< the clicked node
    std::string panel_path; ///< the node shown for it
    std::string state;      ///< the state put on the tab while it is selected
};

/// A set of tabs of which at most one is selected. Two tabs may share a panel.
class WindowTabs {
public:
    explicit WindowTabs(CorvelApp& app);

    /// Adds a tab, or updates the one of this path.
    void add(const std::string& tab_path, const std::string& panel_path, const std::string& state);
    /// Selects a tab and shows its panel; nothing for the selected or an unknown one.
    void select(const std::string& tab_path);
    /// Forgets a tab and hides its panel. True if it was selected; nothing is selected then.
    bool remove(const std::string& tab_path);

    CorvelApp* app;
    std::vector<TabEntry> entries; ///< in order of adding
    std::string active;            ///< tab path, or empty
    std::string previous;          ///< tab path selected before `active`
};

} // namespace Corvel
