#pragma once

#include "app/context/context.h"
#include "app/context/edit_state.h"
#include "site/json_file.h"

#include <span>
#include <string>
#include <vector>

namespace Lumenfold {

/// A section of a configurator.
struct Section {
    const char* tab;   ///< node below `Shell::sidebar`
    const char* panel; ///< node below `Shell::panels`
    /// Connects the panel and its dialogs; runs once.
    void (*wire)(const Context& context);
    /// Shows the configuration, as read from disk; null for a panel that shows nothing of it.
    void (*fill)(const Context& context, const Json& document);
};

/// A file editor whose unsaved text keeps a configuration from being left without a question.
struct Guard {
    std::string name; ///< as the question calls it
    FileEditor& (*editor)(AppContext& context);
};

/// What a kind of configuration is edited with.
struct ConfiguratorParts {
    std::string root; ///< node path
    /// The first is shown when a configuration opens. They are wired and filled in this order.
    std::span<const Section> sections;
    std::vector<Guard> guards; ///< in the order in which they are asked about
    /// Refills every panel from disk for the active configuration; unsaved text of file editors
    /// stays. It is no closure, so that the shared record owns nothing that owns it.
    void (*reload)(const Context& context);
};

/// The node paths and the state of one configurator; there is one for sites, one for projects.
struct Shell : ConfiguratorParts {
    explicit Shell(ConfiguratorParts parts);

    // Node paths, built once and never changed.
    const std::string editor_panel;   ///< the form view
    const std::string sidebar;        ///< holds the section tabs
    const std::string panels;         ///< holds the section panels
    const std::string text_panel;     ///< the raw text view
    const std::string text_editor;    ///< in `text_panel`
    const std::string status_bar;     ///< in `text_panel`
    const std::string status_message; ///< in `status_bar`
    const std::string save_button;    ///< in `status_bar`

    std::string active_tab;    ///< section tab shown; written by `show_tab`
    std::string view;          ///< "editor" or "text", empty at first; written by `set_view`
    bool invalid = false;      ///< state Invalid on `status_bar`; written by `set_status`
    bool save_disabled = true; ///< state Disabled on `save_button`; written by `set_status`
    TextKeeper keeper;         ///< of `text_editor`
};

} // namespace Lumenfold
