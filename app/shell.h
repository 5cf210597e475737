#pragma once

#include "site/config_files.h"

#include <memory>
#include <string>
#include <vector>

namespace Lumenfold {

struct AppContext;
struct FileEditor;

/// The one shared record of the application; every handler holds a reference of its own.
using Context = std::shared_ptr<AppContext>;

/// One configuration of a project: the project itself, or one entry of a project family.
struct Member {
    std::string path;      ///< the member's configuration file
    std::string label;     ///< shown on the family bar
    bool umbrella = false; ///< the family's overview
    std::string logo;      ///< resolved path; may be empty
    std::string tagline;
};

/// A configuration opened in a tab, and the record of the active one, which is a copy of its
/// tab's. Made by `open_config` and `open_project_card`; changed afterwards only where the
/// configuration's logo, name or members change, in the tab's record and in the active one alike.
struct OpenConfig {
    std::string id;    ///< tab id; empty in the active record while nothing is open
    std::string path;  ///< the file, absolute; for a family the lead's file
    std::string title; ///< shown on the tab
    ConfigKind kind = ConfigKind::Unknown; ///< Unknown: unset
    std::vector<Member> members;           ///< none for a site, two or more for a family
    std::string logo;                      ///< shown on the tab; may be empty
};

/// A section of a configurator: a node below `Shell::sidebar` and one below `Shell::panels`.
struct SectionTab {
    std::string tab;
    std::string panel;
};

/// A file editor whose unsaved text keeps a configuration from being left without a question.
struct Guard {
    std::string name; ///< as the question calls it
    std::shared_ptr<FileEditor> editor;
};

/// The node paths and the state of one configurator; there is one for sites, one for projects.
struct Shell {
    Shell(const std::string& root_path, std::vector<SectionTab> section_tabs);

    // Node paths, built once and never changed.
    const std::string root;
    const std::string editor_panel;     ///< the form view
    const std::string sidebar;          ///< holds the section tabs
    const std::string panels;           ///< holds the section panels
    const std::string text_panel;       ///< the raw text view
    const std::string text_editor;      ///< in `text_panel`
    const std::string status_bar;       ///< in `text_panel`
    const std::string status_message;   ///< in `status_bar`
    const std::string save_button;      ///< in `status_bar`
    const std::vector<SectionTab> tabs; ///< the first is the default

    std::string active_tab;    ///< section tab shown; written by `show_tab`
    std::string view;          ///< "editor" or "text", empty at first; written by `set_view`
    bool invalid = false;      ///< state Invalid on `status_bar`; written by `set_status`
    bool save_disabled = true; ///< state Disabled on `save_button`; written by `set_status`

    /// Refills every panel from disk for the active configuration, giving up what is unsaved.
    /// Installed once while wiring. It is no closure, so that the shared record owns nothing that
    /// owns it.
    void (*reload)(const Context& context) = nullptr;

    /// Every file editor of this configurator, in the order of wiring.
    std::vector<Guard> guards;
};

} // namespace Lumenfold
