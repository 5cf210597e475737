#pragma once

#include "runtime/render_node.h"
#include "runtime/services.h"
#include "theme/theme.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Layers {
class LayersEngine;
class LLayer;
} // namespace Layers

namespace Corvel {

/// One row of a named list: the id becomes the row's last path component and the item of its
/// clicks, the fields feed the row's bindings.
struct ListEntry {
    std::string id;
    std::map<std::string, std::string> fields;
};

/// What a click on a path means: an action on a row of a list (`item_id` empty: on the list).
struct RowTarget {
    std::string list_key;
    std::string item_id;
    std::string action;
};

/// The object that application code talks to: a store of interface state keyed by node path, the
/// callbacks keyed the same way, and the services of the platform as slots.
///
/// A node path is the slash-joined names of the layers from the root ("App/Main/Title"); a row of
/// a list takes the row's id as last component. Paths are compared byte by byte. No operation
/// fails: state for a path without a node is kept and shows as soon as the node appears. Nothing
/// here renders; the view asks for `render_patches` after each event. All calls run on one thread,
/// the user-interface thread.
class CorvelApp {
public:
    using Action = std::function<void()>;
    using TextHandler = std::function<void(const std::string& text)>;
    using RowHandler = std::function<void(const std::string& key, const std::string& item,
                                          const std::string& action)>;
    using RowsHandler = std::function<void(const std::vector<ListEntry>& rows)>;

    CorvelApp();
    ~CorvelApp();
    CorvelApp(const CorvelApp&) = delete;
    CorvelApp& operator=(const CorvelApp&) = delete;

    // -- Assets and themes ------------------------------------------------------------------

    /// Loads `styles_dir`/widgets into the layer "Corvel", `styles_dir`/mounts and each of
    /// `style_dirs` into the root, links the attributes, reads the themes and applies the one
    /// named, or the one whose display name sorts lowest. False if there is no theme at all.
    bool load_assets(const std::string& themes_dir, const std::string& styles_dir,
                     const std::string& theme_name, const std::vector<std::string>& style_dirs);
    /// Puts the theme in force and, if it was not, tells `theme_write`. False if unknown.
    bool set_theme(const std::string& display_name);
    /// Forgets a theme; the active one gives way to the first other. False if unknown or the last.
    bool remove_theme(const std::string& display_name);
    /// Reads a theme file's text into the known themes, in force at once if it has the active
    /// theme's name. Returns its display name, empty if it does not parse.
    std::string add_theme_text(const std::string& text);
    const std::string& active_theme() const;
    /// Every theme known, by display name.
    const std::map<std::string, Theme>& themes() const;
    Layers::LayersEngine& engine();

    // -- State of nodes ----------------------------------------------------------------------

    /// Names the root layer of the interface.
    void set_root(const std::string& name);
    void set_visible(const std::string& path, bool visible);
    void add_state(const std::string& path, const std::string& state);
    void remove_state(const std::string& path, const std::string& state);
    void toggle_state(const std::string& path, const std::string& state);
    void set_state(const std::string& path, const std::string& state, bool on);
    void set_checked(const std::string& path, bool on);
    bool is_checked(const std::string& path) const;
    bool has_state(const std::string& path, const std::string& state) const;
    void set_text(const std::string& path, const std::string& text);
    /// Adds to the end of the text set for a node: a log grows without being copied line by line.
    void append_text(const std::string& path, const std::string& addition);
    /// An empty source returns the node to its style's source.
    void set_source(const std::string& path, const std::string& source);
    /// Has every node that shows the image `file` read it again, since it changed under its name:
    /// their source is empty for a moment. Nothing without `run_after`.
    void reread_source(const std::string& file);
    void set_href(const std::string& path, const std::string& href);
    void set_data(const std::string& path, const std::string& data);
    /// Overrides the height, in pixels; 0 takes the override away.
    void set_height(const std::string& path, double pixels);
    /// The text now in an Editor as the user and the application left it; empty if there is none.
    std::string input_value(const std::string& path) const;
    bool has_input_value(const std::string& path) const;
    /// Seen by the Editor when it is next made; a live one keeps what it shows.
    void set_input_value(const std::string& path, const std::string& text);
    /// Overwrites a live Editor at the next render, whatever it shows.
    void queue_editor_text(const std::string& path, const std::string& text);
    /// Puts a state in force on every node, from the next render on.
    void add_global_state(const std::string& state);

    // -- Callbacks; each registration replaces the last one of its key ------------------------

    void on_click(const std::string& path, Action fn);
    void on_input(const std::string& path, TextHandler fn);
    void on_scan(const std::string& path, TextHandler fn);
    void on_select(const std::string& path, TextHandler fn);
    void on_row_click(const std::string& key, RowHandler fn);
    void on_rows(const std::string& key, RowsHandler fn);

    // -- Lists ---------------------------------------------------------------------------------

    /// Replaces the items of a Combo Box; a selection no longer among them becomes the first.
    void set_options(const std::string& path, std::vector<ComboItem> items);
    /// Selects an existing value without telling `on_select`.
    void set_selected(const std::string& path, const std::string& value);
    std::string selected(const std::string& path) const;
    /// Replaces the rows of a named list, then tells its listener.
    void set_rows(const std::string& key, std::vector<ListEntry> rows);

    // -- For checks that code and styles agree ---------------------------------------------------

    /// By path, what was set there or is listened to: "text", "source", "height", "state",
    /// "hidden", "options", "input value", "click", "input", "select" and the like.
    using PathUses = std::map<std::string, std::set<std::string>>;
    PathUses path_uses() const;
    /// The keys of every list that was filled or is listened to.
    std::set<std::string> list_keys() const;

    // -- Services: slots that stay empty until an installer fills them --------------------------

    std::function<void(const std::string& name)> theme_write;
    std::function<void(const std::string& path, const std::string& text)> scan_status_hook;
    /// Row click of a list with no handler of its own.
    RowHandler on_any_row_click;
    std::function<void(const HttpRequest&, std::function<void(const HttpResponse&)>)> http;
    std::function<void(const std::string& method, const std::string& accept, const std::string& url,
                       const HeaderList& headers, const std::string& field,
                       std::function<void(const UploadResult&)>)>
        uploader;
    /// Calls back with the chosen path, empty if cancelled.
    std::function<void(const PickRequest&, TextHandler)> file_pick;
    std::function<void(const std::string& url)> open_url;
    std::function<void(const std::string& text)> copy_text;
    /// The second text is ignored.
    std::function<void(const std::string& name, const std::string& ignored,
                       const std::string& content, std::function<void(bool)>)>
        save_text_file;
    /// Starts a program; each line of its output, then its exit code (-1: crashed or not started).
    /// What it returns ends the program: nothing more is heard of it then.
    std::function<Action(const std::vector<std::string>& argv, TextHandler on_line,
                         std::function<void(int)> on_exit)>
        process;
    std::function<void(int milliseconds, Action)> run_after;
    /// May be called from any thread; `fn` runs on the user-interface thread.
    std::function<void(Action fn)> post;
    /// Filled by the view: state changed outside a view event.
    Action on_async_change;
    /// Filled by the application: it came to the front, and files may have changed meanwhile.
    Action on_activate;
    std::function<void(const std::string& key, const std::string& value)> store_write;

    /// `file_pick`, or an empty path at once when the slot is empty.
    void pick_file(const PickRequest& request, TextHandler fn);

    // -- Settings ------------------------------------------------------------------------------

    /// The value, empty when absent: the store does not tell the two apart.
    std::string store_get(const std::string& key) const;
    /// Stores (an empty value erases), then passes the change to `store_write`.
    void store_set(const std::string& key, const std::string& value);
    /// Text settings in memory. Filled at start; application code writes through `store_set`.
    std::map<std::string, std::string> store;
    std::string app_version; ///< empty: a development build
    std::string data_folder; ///< for files of the application's own; empty: it has no place

    // -- Called by the view ---------------------------------------------------------------------

    /// "click", "input:" + text, "select:" + value, "scan:" + text, "scanstatus:" + text. Runs the
    /// handlers; the caller renders afterwards.
    void dispatch_event(const std::string& path, std::string_view event);
    /// Builds the tree anew and returns what changed since the last call; the first call gives
    /// one Add of the whole tree.
    std::vector<RenderPatch> render_patches();
    RenderNode build_render_tree();
    // Each tells whether a render is due.
    bool set_viewport_width(double w);
    bool set_viewport_height(double h);
    bool set_maximized(bool on);
    bool set_controls_hidden(bool on);
    bool accumulate_scroll(double delta);

    double mobile_icon_scale = 1.5;
    double mobile_font_scale = 1.25;
    double mobile_size_scale = 1.25;

private:
    friend class RenderBuilder;
    struct State;
    void click(const std::string& path);
    void select_option(const std::string& path, const std::string& value);
    void set_active_theme(const std::string& display_name);
    std::unique_ptr<State> state_;
};

/// The kind of a node made from `layer`, from the names along its chain of bases.
NodeKind node_kind_of(const Layers::LLayer* layer);

} // namespace Corvel
