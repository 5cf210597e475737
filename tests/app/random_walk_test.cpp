// Anything in any order, on files that somebody else changes, removes and restores between any two
// events. LUMENFOLD_WALK_ACTIONS asks for a long run, LUMENFOLD_WALK_SEED for another one.
#include "app_driver.h"
#include "random_site.h"
#include "site/json_file.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <set>

namespace TestSupport {
namespace {

using Corvel::NodeKind;
using Lumenfold::Json;

const std::string SITE_PANELS =
    "App/Lumenfold Window/Config Pane/Site Configurator/Editor Panel/Panels/";
const std::string PROJECT_PANELS =
    "App/Lumenfold Window/Config Pane/Project Configurator/Editor Panel/Panels/";

int from_environment(const char* name, int otherwise) {
    const char* set = std::getenv(name);
    return set ? std::atoi(set) : otherwise;
}

/// A text typed into an editor of a whole file.
struct Typed {
    std::string begun_on;        ///< what the editor showed before
    bool may_be_dropped = false; ///< a question may have it given up
};

/// A text typed into a field of a form, by the record and its key.
using Place = std::pair<std::string, std::string>;

/// What the user did since the files were last looked at, which says what may have changed.
struct Permission {
    std::string removed;            ///< the record that a question named
    std::string moved;              ///< the section that a button moves
    bool adds = false;              ///< a dialog makes a record
    std::vector<std::string> saved; ///< texts of the editors when Save was pressed
    bool overwrites = false;        ///< a question allowed it
};

class Walker : public AppDriver {
public:
    explicit Walker(unsigned seed)
        : random_(seed)
        , site_(random_, dir.path()) {}

    void begin() {
        start(site_.to_open());
        before_ = site_.look();
    }

    void act() {
        action_.clear();
        permission_ = {};
        before_ = site_.look();
        if (!dialog().empty() && random_.one_in(3)) {
            disturb_or_wait();
        } else if (!dialog().empty()) {
            use_something(dialog());
        } else if (random_.one_in(3)) {
            disturb_or_wait();
        } else if (random_.one_in(25)) {
            open_a_file();
        } else {
            use_something("App/Lumenfold Window");
        }
        hear();
        check();
    }

    const std::string& action() const { return action_; }

private:
    // --- What is done

    void disturb_or_wait() {
        if (random_.one_in(2)) {
            action_ = "somebody: " + site_.disturb(shown_file());
            disturbances_ += 1;
            before_ = site_.look(); // not the application's doing
            return;
        }
        const int wait = random_.one_of({0, 100, 600, 2100});
        action_ = "wait " + std::to_string(wait);
        if (wait == 0)
            app->on_activate();
        advance(wait);
        settled_ = wait >= 600;
    }

    /// The configuration that is edited; empty if none can be told.
    std::string shown_file() {
        if (shown("Config Pane/Site Configurator"))
            return "site/.lumenfold-site";
        const std::string slug = shown_project();
        if (!shown("Config Pane/Project Configurator") || slug.empty())
            return {};
        return "site/projects/" + slug +
               (shown("Panels/Topics Panel") ? "/src/.lumenfold" : "/.lumenfold-project");
    }

    void open_a_file() {
        const auto file = random_.any_of(site_.to_open());
        action_ = "open " + file.string();
        open(file);
    }

    /// The dialog in front; empty if there is none.
    std::string dialog() const {
        for (const std::string name : {"Message", "Confirm"})
            if (shown("App/" + name + " Dialog"))
                return "App/" + name + " Dialog";
        for (const auto& [path, entry] : screen().nodes())
            if (path.starts_with("App/") && path.ends_with(" Dialog") &&
                path.find('/', 4) == std::string::npos && entry.shown.style->visible)
                return path;
        return {};
    }

    static bool is_of_no_interest(const std::string& path) {
        for (const char* part :
             {"/Settings", "Browse", "Favicon", "Build", "Output", "/Home/", "Theme", "Right Tabs",
              "Window Controls", "Promote", "Minimize", "Maximize", "Close Button", "Heights Row",
              "Slug Field", "Logo Picker", "Versions", "Restore Window"})
            if (path.find(part) != std::string::npos)
                return true;
        return path == "App/Lumenfold Window/Titlebar/Exit Button";
    }

    void use_something(const std::string& within) {
        std::vector<std::string> paths;
        for (const auto& [path, entry] : screen().nodes()) {
            const Corvel::RenderNode& node = entry.shown;
            const bool useful = node.kind == NodeKind::Button || node.kind == NodeKind::CheckBox ||
                                node.kind == NodeKind::Editor || node.kind == NodeKind::ComboBox;
            if (useful && path.starts_with(within + "/") && !is_of_no_interest(path) &&
                !app->has_state(path, "Disabled") && !app->has_state(path, "Locked"))
                paths.push_back(path);
        }
        if (paths.empty())
            return;
        const std::string path = random_.any_of(paths);
        const Corvel::RenderNode& used = screen().nodes().at(path).shown;
        if (used.kind == NodeKind::Editor)
            type_into(path);
        else if (used.kind == NodeKind::ComboBox)
            choose_in(path, used);
        else
            press(path);
    }

    void choose_in(const std::string& path, const Corvel::RenderNode& combo) {
        if (combo.items->empty())
            return;
        const std::string value = random_.any_of(combo.items.get()).value;
        action_ = "choose " + path + " = " + value;
        choose(path, value);
    }

    void press(const std::string& path) {
        action_ = "press " + path;
        if (path.ends_with("/Save Button"))
            note_saved_texts();
        if (path.ends_with("/Create Button") || path.ends_with("Preset") ||
            path.find("/Orphan Rows/") != std::string::npos)
            permission_.adds = true;
        if (path.ends_with("/Up Button") || path.ends_with("/Down Button"))
            permission_.moved = site_.owner_of(title_of_row(path));
        if (path.ends_with("/Discard Button"))
            allow_drop(false);
        if (path == "App/Confirm Dialog/Body/Actions/Confirm Button")
            note_confirmed(question());
        const bool closes = screen().nodes().at(path).shown.style->intent == "list:close";
        click(path);
        if (closes || path.ends_with("/Restore Button"))
            settled_ = false;
    }

    /// What the row of a button calls itself.
    std::string title_of_row(const std::string& path) const {
        const std::size_t row = path.find("/Section Cards/") + 15;
        const std::string words = reading(path.substr(0, path.find('/', row)));
        return words.substr(0, words.find('|'));
    }

    void note_confirmed(const std::string& asked) {
        action_ += " (" + asked + ")";
        for (const auto& [before, behind] :
             {std::pair<std::string, std::string>(" '", "'"), {"Remove the ", " download?"}})
            if (const std::size_t at = asked.find(before);
                asked.starts_with("Remove") && at != std::string::npos) {
                const std::size_t begin = at + before.size();
                permission_.removed =
                    site_.owner_of(asked.substr(begin, asked.find(behind, begin) - begin));
            }
        if (asked.find("Its unsaved text goes") != std::string::npos ||
            asked.starts_with("Discard changes?"))
            allow_drop(true);
        if (asked.starts_with("Changed on Disk")) {
            note_saved_texts();
            permission_.overwrites = true;
        }
    }

    void allow_drop(bool all) {
        for (auto& [text, typed] : typed_)
            typed.may_be_dropped = typed.may_be_dropped || all || !is_shown(text);
    }

    void note_saved_texts() {
        for (const auto& [path, entry] : screen().nodes())
            if (entry.shown.kind == NodeKind::Editor && is_whole_file(path))
                permission_.saved.push_back(text(path));
    }

    // --- Typing

    static bool is_whole_file(const std::string& path) {
        for (const char* name : {"/File Editor", "/Readme Editor", "/License Editor"})
            if (path.ends_with(name) && path.find("Row/") == std::string::npos)
                return true;
        return path.ends_with("/Text Editor") && path.find("Text Panel") != std::string::npos;
    }

    void type_into(const std::string& path) {
        const std::string word = random_.word();
        action_ = "type " + path + " = " + word;
        if (is_whole_file(path))
            type_file(path, word);
        else if (path.find("Dialog/") != std::string::npos)
            type(path, dialog_text(path, word));
        else
            type_field(path, word);
    }

    std::string dialog_text(const std::string& path, const std::string& word) {
        if (path.ends_with("Slug Editor") && random_.one_in(4))
            return "../../out";
        const bool is_file = path.ends_with("File Editor") || path.ends_with("Source Editor");
        return is_file ? word + ".md" : word;
    }

    void type_file(const std::string& path, const std::string& word) {
        const std::string before = text(path);
        Typed typed{before};
        for (const auto& [older, record] : typed_)
            if (before.find(older) != std::string::npos)
                typed.begun_on = record.begun_on;
        std::erase_if(typed_,
                      [&](const auto& old) { return before.find(old.first) != std::string::npos; });
        typed_[word] = typed;
        editors_.insert(path);
        type(path, path.ends_with("/Text Editor") ? site_.with_title(before, word) : word);
    }

    void type_field(const std::string& path, const std::string& word) {
        const std::optional<Place> place = place_of(path);
        if (!place)
            return;
        const std::string value = site_.value_for(place->second, word);
        site_.owns(value, *place);
        fields_[*place] = value;
        if (value == word)
            pending_[*place] = disturbances_;
        type(path, value);
    }

    /// The record and the key that a field shows.
    std::optional<Place> place_of(const std::string& path) const {
        const auto below = [&](const std::string& panels, const std::string& name) {
            return path == panels + name;
        };
        for (const auto& [field, key] : {std::pair("Title", "title"),
                                         {"Description", "description"},
                                         {"URL", "url"},
                                         {"Copyright", "copyright"}})
            if (below(SITE_PANELS, std::string("Website Panel/Site Form/") + field + " Field"))
                return Place{"site", key};
        for (const auto& [field, key] :
             {std::pair("Name", "name"), {"Title", "title"}, {"File", "file"}})
            if (below(SITE_PANELS, std::string("Policies Panel/Meta Form/") + field + " Field"))
                return place_in(text("Policies Panel/Meta Form/Name Field"), key);
        for (const auto& [field, key] : {std::pair("Label", "label"),
                                         {"Title", "title"},
                                         {"Intro", "intro"},
                                         {"Source", "source"}})
            if (below(PROJECT_PANELS, std::string("Topics Panel/Meta Form/") + field + " Field"))
                return place_in(text("Topics Panel/Meta Form/Label Field"), key);
        for (const auto& [field, key] : {std::pair("Name", "name"), {"Tagline", "tagline"}})
            if (below(PROJECT_PANELS,
                      std::string("Project Panel/Project Form/") + field + " Field"))
                return place_in(shown_project(), key);
        if (path.ends_with("/Value Field"))
            return place_in(screen().nodes().at(path).shown.style->placeholder, "value");
        if (below(PROJECT_PANELS, "Source Panel/Local Form/Source Path Field"))
            return place_in(shown_project() + " build", "source_path");
        return std::nullopt;
    }

    std::string shown_project() const {
        return app->input_value(PROJECT_PANELS + "Project Panel/Project Form/Slug Field");
    }

    std::optional<Place> place_in(const std::string& name, const std::string& key) const {
        const std::string owner = site_.owner_of(name);
        return owner.empty() ? std::nullopt : std::optional(Place{owner, key});
    }

    // --- What is said

    void hear() {
        const std::string message = take_message();
        if (message.empty())
            return;
        action_ += " [" + message + "]";
        if (message.find("the list was read again") != std::string::npos)
            pending_.clear();
    }

    // --- What must hold

    /// In an editor, be its panel in front or not.
    bool is_shown(const std::string& word) const {
        return std::any_of(editors_.begin(), editors_.end(), [&](const std::string& path) {
            return app->input_value(path).find(word) != std::string::npos;
        });
    }

    bool is_kept(const std::string& word) const {
        for (const auto& [name, content] : file_tree(data.path()))
            if (content.find(word) != std::string::npos)
                return true;
        return false;
    }

    void check() {
        const Look after = site_.look();
        check_records(after);
        check_files(after);
        check_typed(after);
        check_fields(after);
        if (permission_.adds)
            site_.claim_new_records();
    }

    void fail(const std::string& what) { ADD_FAILURE() << action_ << "\n  " << what; }

    bool was_saved_whole(const std::string& file, const Look& after) const {
        const auto content = after.files.find(file);
        return content != after.files.end() &&
               std::count(permission_.saved.begin(), permission_.saved.end(), content->second) > 0;
    }

    void check_records(const Look& after) {
        for (const auto& [id, record] : before_.records) {
            if (was_saved_whole(record.file, after))
                continue;
            const auto now = after.records.find(id);
            if (now == after.records.end())
                check_removal(id, record);
            else
                check_change(id, record.value, now->second.value);
        }
        for (const auto& [list, ids] : before_.lists)
            check_order(ids, after, list);
    }

    void check_removal(const std::string& id, const Look::Record& record) {
        const bool goes_along = record.list.ends_with("/footer_links") &&
                                action_.find("Remove Policy") != std::string::npos;
        const bool is_entry = "entry " + permission_.removed == id;
        if (id != permission_.removed && !is_entry && !goes_along)
            fail("removed: " + id + " of " + record.file + ", allowed: " + permission_.removed);
    }

    void check_change(const std::string& id, const Json& before, const Json& now) {
        if (before == now)
            return;
        for (const auto& [key, value] : now.items()) {
            const auto old = before.find(key);
            if ((old != before.end() && *old == value) || key == "format")
                continue;
            if (value == "README.md" || value == "LICENSE")
                continue; // what "Create" calls a file that has no name
            const auto typed = fields_.find({id, key});
            if (typed == fields_.end() || Json(typed->second) != value)
                fail("changed: " + key + " of " + id + " to " + value.dump() + " in " +
                     before.dump());
        }
        for (const auto& [key, value] : before.items())
            if (!now.contains(key))
                fail("lost: " + key + " of " + id);
    }

    void check_order(std::vector<std::string> ids, const Look& after, const std::string& list) {
        const auto found = after.lists.find(list);
        if (found == after.lists.end())
            return; // its records are missed above
        std::vector<std::string> now = found->second;
        const auto drop = [](std::vector<std::string>& from, const auto& goes) {
            std::erase_if(from, goes);
        };
        drop(ids,
             [&](const std::string& id) { return std::count(now.begin(), now.end(), id) == 0; });
        drop(now,
             [&](const std::string& id) { return std::count(ids.begin(), ids.end(), id) == 0; });
        if (ids == now || was_saved_whole(list.substr(0, list.find('#')), after))
            return;
        // Of two records with one identity that which was removed cannot be told by its name.
        const auto may_go = [&](const std::string& id) {
            return id == permission_.moved || id == permission_.removed;
        };
        drop(ids, may_go);
        drop(now, may_go);
        if (ids != now || (permission_.moved.empty() && permission_.removed.empty()))
            fail("reordered: " + list + ", allowed: " + permission_.moved +
                 "\n  before: " + testing::PrintToString(before_.lists.at(list)) +
                 "\n  after: " + testing::PrintToString(found->second));
    }

    void check_files(const Look& after) {
        for (const auto& [file, content] : before_.files)
            if (!after.files.contains(file))
                fail("gone: " + file);
        for (const auto& [file, content] : after.files) {
            const auto old = before_.files.find(file);
            if (old != before_.files.end() && old->second == content)
                continue;
            if (!Site::is_in_its_place(file))
                fail("out of place: " + file);
            if (Site::is_configuration(file) && !Lumenfold::parse_json(content))
                fail("does not parse: " + file);
            if (Site::is_configuration(file) && !was_saved_whole(file, after))
                continue;
            check_saved(file, content, old == before_.files.end() ? nullptr : &old->second, after);
        }
    }

    void check_saved(const std::string& file, const std::string& content, const std::string* old,
                     const Look& after) {
        if (!old && permission_.adds)
            return;
        if (!was_saved_whole(file, after))
            return fail("written: " + file);
        if (!old || permission_.overwrites)
            return;
        for (const auto& [word, typed] : typed_)
            if (content.find(word) != std::string::npos && typed.begun_on != *old)
                fail("overwritten unasked: " + file + " which held " + *old);
    }

    void check_typed(const Look& after) {
        std::erase_if(typed_, [&](const auto& entry) {
            const auto& [word, typed] = entry;
            for (const auto& [file, content] : after.files)
                if (content.find(word) != std::string::npos)
                    return true; // saved
            if (is_shown(word) || is_kept(word))
                return false;
            if (!typed.may_be_dropped)
                fail("lost: " + word);
            return true;
        });
        for (auto& [word, typed] : typed_)
            typed.may_be_dropped = false;
    }

    void check_fields(const Look& after) {
        // Edits of a manifest wait for their project's configuration too.
        const bool settled = std::exchange(settled_, false) && after.all_parse;
        std::erase_if(pending_, [&](const auto& entry) {
            const auto& [place, disturbances] = entry;
            const auto record = after.records.find(place.first);
            if (record != after.records.end() &&
                record->second.value.value(place.second, "") == fields_.at(place))
                return true;
            if (settled && record != after.records.end() && disturbances == disturbances_) {
                fail("not written: " + place.second + " of " + place.first);
                return true;
            }
            return false;
        });
    }

    Random random_;
    Site site_;
    Look before_;
    std::string action_;
    Permission permission_;
    int disturbances_ = 0;
    bool settled_ = false;                ///< time enough went by for every form edit
    std::map<std::string, Typed> typed_;  ///< unsaved, by the word that is found again
    std::set<std::string> editors_;       ///< of whole files, in which something was typed
    std::map<Place, std::string> fields_; ///< last typed
    std::map<Place, int> pending_;        ///< not written yet; how many disturbances there were
};

TEST(RandomWalk, ChangesNothingThatWasNotShownAndLosesNothingThatWasTyped) {
    const int actions = from_environment("LUMENFOLD_WALK_ACTIONS", 300);
    Walker walker(static_cast<unsigned>(from_environment("LUMENFOLD_WALK_SEED", 7)));
    walker.begin();
    std::vector<std::string> done;
    for (int i = 0; i < actions && !testing::Test::HasFailure(); ++i) {
        walker.act();
        done.push_back(std::to_string(i) + " " + walker.action());
    }
    if (!testing::Test::HasFailure())
        return;
    for (std::size_t i = done.size() - std::min<std::size_t>(done.size(), 40); i < done.size(); ++i)
        std::cerr << done[i] << "\n";
}

} // namespace
} // namespace TestSupport
