// Random interfaces under random operations: every render equals one that remembers nothing, its
// patches are those of a comparison by names alone, and a view that applies them follows.

#include "layers/engine.h"
#include "runtime/app_fixture.h"
#include "runtime/plain_render.h"
#include "support/model_view.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <sstream>

namespace Corvel {
namespace {

using TestSupport::ModelView;
using TestSupport::TestApp;
using TestSupport::theme_text;

class Dice {
public:
    explicit Dice(unsigned seed)
        : engine_(seed) {}
    int below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned>(limit)); }
    bool chance(int percent) { return below(100) < percent; }
    template <class Range>
    auto pick(const Range& range) {
        return *std::next(std::begin(range), below(static_cast<int>(std::size(range))));
    }

private:
    std::mt19937 engine_;
};

using Words = std::vector<std::string>;

const Words state_words = {"A", "B", "C", "Mobile", "First", "Last", "Narrow", "Checked"};
const Words list_keys = {"alpha", "beta", ""};
const Words field_keys = {"k0", "k1", "k2"};
const Words values = {"", "0", "false", "1", "12.5", " 7px", "-3", "1e999", "nan?", "x/y"};
const Words row_ids = {"r0", "r1", "r2", "r3", "r1:sep", "L0", "a/b", "", "r0/L0", "\xff\x01"};
const Words theme_names = {"Plain", "Night", "Day", "Odd"};

std::string quote(const std::string& text) {
    return "\"" + text + "\"";
}

const Words intents = {"\"list:open\"", "\"list:add:alpha\"", "\"list:\"", "\"window:drag\""};

/// Writes the style file of a random interface.
class InterfaceWriter {
public:
    explicit InterfaceWriter(Dice& dice)
        : dice_(dice) {}

    std::string write() {
        text_ = "App:\n";
        write_children(1, 3 + dice_.below(4), 35);
        return text_;
    }

private:
    void write_children(int depth, int count, int percent_lists) {
        for (int i = 0; i < count; ++i)
            write_layer(depth, "L" + std::to_string(i), percent_lists);
    }

    void write_layer(int depth, const std::string& name, int percent_lists) {
        static const Words kinds = {"Box",  "Box",       "Text",      "Button",
                                    "Icon", "Editor",    "Image",     "Markdown",
                                    "QR",   "Check Box", "Combo Box", "Detail"};
        const std::string kind = dice_.pick(kinds);
        line(depth, name + " << Corvel/" + kind + ":");
        line(depth + 1, "Tag: " + quote(name)); // so that no body is empty
        write_attributes(depth + 1);
        if (kind == "Button" && dice_.chance(60))
            write_value(depth + 1, "Intent", dice_.pick(intents), dice_.pick(intents));
        const bool list = dice_.chance(percent_lists);
        std::string bind;
        if (list)
            bind = dice_.chance(25) ? "ThemeList" : "List:" + dice_.pick(list_keys);
        else if (dice_.chance(50))
            bind = random_pieces();
        if (!bind.empty())
            write_value(depth + 1, "Bind", quote(bind), quote(random_pieces()));
        if (depth < 5)
            write_children(depth + 1, list ? 1 + dice_.below(2) : dice_.below(depth > 2 ? 3 : 4),
                           percent_lists / 2);
    }

    void write_attributes(int depth) {
        struct Choice {
            const char* name;
            Words values;
        };
        static const std::vector<Choice> choices = {
            {"Visible", {"0", "1", "1"}},
            {"Text", {quote("one"), quote("two"), quote("")}},
            {"Fill", {"Theme/Primary", quote("#102030"), "Theme/Gradient.Start Color"}},
            {"Text Color", {"Theme/Foreground", quote("#ffffff")}},
            {"Size.Width", {"10", "0", "33.5"}},
            {"Size.Height", {"20", "40"}},
            {"Size.Height Viewport", {"0.5", "0", "1"}},
            {"Font.Size", {"12", "14"}},
            {"Margins.Left", {"4", "0"}},
            {"Source", {quote("star"), quote("moon")}},
        };
        for (const Choice& choice : choices) {
            if (dice_.chance(22))
                write_value(depth, choice.name, dice_.pick(choice.values),
                            dice_.pick(choice.values));
        }
        if (dice_.chance(10)) {
            line(depth, "Border << Corvel/Detail:");
            line(depth + 1, "Thickness: 2");
            line(depth + 1, "Fill: Theme/Tertiary");
        }
    }

    /// A value, sometimes with a variant for a state or two.
    void write_value(int depth, const std::string& name, const std::string& value,
                     const std::string& variant) {
        std::string states;
        if (dice_.chance(40))
            states = " @" + dice_.pick(state_words) + ": " + variant;
        line(depth, name + ": " + value + states);
    }

    std::string random_pieces() {
        static const Words forms = {
            "Field:",       "Href:",    "MaxWidth:", "Aspect:", "Indent:", "Grow:",
            "Placeholder:", "Opacity:", "State:A:",  "State:",  "Unknown:"};
        static const Words themes = {"ThemeName", "ThemePublisher", "ActiveThemeName",
                                     "ActiveThemePublisher"};
        std::string pieces;
        for (int i = dice_.below(3); i >= 0; --i) {
            pieces +=
                dice_.chance(25) ? dice_.pick(themes) : dice_.pick(forms) + dice_.pick(field_keys);
            pieces += dice_.chance(50) ? ";" : " ; ";
        }
        return pieces;
    }

    void line(int depth, const std::string& text) {
        text_.append(static_cast<std::size_t>(depth) * 4, ' ').append(text).append("\n");
    }

    Dice& dice_;
    std::string text_;
};

std::string random_theme(Dice& dice, const std::string& name) {
    std::string members = "\"_meta\": {\"publisher\": \"" + dice.pick(Words{"", "pub"}) + "\"}";
    for (const char* key : {"Foreground", "Primary", "Secondary", "Tertiary"}) {
        if (dice.chance(70))
            members += std::string(", \"") + key + "\": \"#" + std::to_string(dice.below(9)) + "\"";
    }
    return theme_text(name, members);
}

std::string describe(const RenderNode& node) {
    std::ostringstream out;
    const NodeStyle& style = node.style;
    out << node.path.get() << " kind " << static_cast<int>(node.kind) << " name " << node.name.get()
        << " text '" << node.text.get() << "' items " << node.items.size() << " selected '"
        << node.selected.get() << "' children " << node.children.size() << " width " << style.width
        << " height " << style.height << " fill " << style.fill.text << " color "
        << style.text_color << " opacity " << style.opacity << " source " << style.source << '/'
        << style.effective_source << " href " << style.href << " bind " << style.bind;
    return out.str();
}

/// Empty, or the first place where two trees differ.
std::string first_difference(const RenderNode& expected, const RenderNode& actual) {
    bool equal = expected.kind == actual.kind && expected.name == actual.name &&
                 expected.path == actual.path && expected.text == actual.text &&
                 expected.items == actual.items && expected.selected == actual.selected &&
                 expected.style.get() == actual.style.get() &&
                 expected.children.size() == actual.children.size();
    if (!equal)
        return "expected " + describe(expected) + "\nactual   " + describe(actual);
    for (std::size_t i = 0; i < expected.children.size(); ++i) {
        std::string difference = first_difference(expected.children[i], actual.children[i]);
        if (!difference.empty())
            return difference;
    }
    return {};
}

std::string describe(const std::vector<RenderPatch>& patches) {
    std::string text;
    for (const RenderPatch& patch : patches)
        text += std::to_string(static_cast<int>(patch.kind)) + " " + patch.path.get() + " under " +
                patch.parent_path.get() + " at " + std::to_string(patch.index) + "\n";
    return text;
}

bool same_patches(const std::vector<RenderPatch>& a, const std::vector<RenderPatch>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& x, const auto& y) {
        return x.kind == y.kind && x.path == y.path && x.parent_path == y.parent_path &&
               x.index == y.index && first_difference(x.node, y.node).empty();
    });
}

bool collect_paths(const RenderNode& node, std::set<std::string>& paths) {
    bool distinct = paths.insert(node.path).second;
    for (const RenderNode& child : node.children)
        distinct = collect_paths(child, paths) && distinct;
    return distinct;
}

/// An application under test beside the plain state that it should be in.
class World {
public:
    explicit World(unsigned seed)
        : dice_(seed)
        , app_(InterfaceWriter(dice_).write(),
               {random_theme(dice_, "Plain"), random_theme(dice_, "Night")}) {
        for (const std::string& key : list_keys)
            app_->on_row_click(key, [this](const auto& list, const auto& item, const auto& action) {
                clicked_ = list + "|" + item + "|" + action;
            });
        expected_ = Plain::render(app_.app, plain_);
        if (expected_.visited.empty())
            throw std::logic_error("the random interface does not load");
    }

    void step() {
        log_.emplace_back("--");
        for (int i = dice_.below(5); i > 0; --i)
            random_operation();
        compare_render();
        if (dice_.chance(20))
            compare_clicks();
    }

    std::string log() const {
        std::string text;
        for (const std::string& line : log_)
            text += line + "\n";
        return text;
    }

private:
    void compare_render() {
        const RenderNode before = std::exchange(expected_, {}).tree;
        expected_ = Plain::render(app_.app, plain_);
        if (dice_.chance(15)) // a tree asked for in between changes nothing
            app_->build_render_tree();
        const std::vector<RenderPatch> patches = app_->render_patches();
        if (first_) {
            ASSERT_EQ(patches.size(), 1u);
            ASSERT_EQ(first_difference(expected_.tree, patches[0].node), "");
        } else {
            const auto wanted = Plain::diff(before, expected_.tree);
            ASSERT_TRUE(same_patches(wanted, patches)) << "wanted\n"
                                                       << describe(wanted) << "got\n"
                                                       << describe(patches);
        }
        first_ = false;
        ASSERT_EQ(first_difference(expected_.tree, app_->build_render_tree()), "");
        follow_in_view(patches);
    }

    /// A view knows nodes by path alone, so one that has shown two of a path begins anew.
    void follow_in_view(const std::vector<RenderPatch>& patches) {
        std::set<std::string> paths;
        const bool distinct = collect_paths(expected_.tree, paths);
        if (distinct && paths_distinct_) {
            ASSERT_EQ(view_.apply(patches), "") << describe(patches);
        } else {
            view_ = ModelView();
            if (distinct)
                view_.apply({{PatchKind::Add, expected_.tree.path, {}, 0, expected_.tree}});
        }
        paths_distinct_ = distinct;
        if (distinct) {
            ASSERT_EQ(view_.mismatch(expected_.tree, ModelView::Order::Any), "")
                << describe(patches);
        }
    }

    void compare_clicks() {
        for (const std::string& path : expected_.visited) {
            auto target = expected_.row_targets.find(path);
            if (expected_.theme_card_targets.contains(path))
                continue; // would change the theme
            if (expected_.checkbox_paths.contains(path) && target == expected_.row_targets.end())
                continue; // would change its state
            clicked_.clear();
            app_->dispatch_event(path, "click");
            std::string wanted;
            if (target != expected_.row_targets.end())
                wanted = target->second.list_key + "|" + target->second.item_id + "|" +
                         target->second.action;
            ASSERT_EQ(clicked_, wanted) << "click on " << path;
        }
        if (!expected_.theme_card_targets.empty()) {
            const auto card = dice_.pick(expected_.theme_card_targets);
            app_->dispatch_event(card.first, "click");
            ASSERT_EQ(app_->active_theme(), card.second);
            log_.push_back("theme card " + card.second);
        }
        if (!expected_.checkbox_paths.empty()) {
            const std::string path = dice_.pick(expected_.checkbox_paths);
            if (expected_.row_targets.contains(path) || expected_.theme_card_targets.contains(path))
                return;
            app_->dispatch_event(path, "click");
            toggle(path, "Checked");
            log_.push_back("check " + path);
        }
    }

    void toggle(const std::string& path, const std::string& state) {
        auto& states = plain_.node_states[path];
        if (states.erase(state) == 0)
            states.insert(state);
    }

    std::string some_path() { return dice_.pick(expected_.visited); }

    void random_operation() {
        const std::string path = some_path();
        const std::string value = dice_.pick(values);
        const std::string state = dice_.pick(state_words);
        const int operation = dice_.below(26);
        log_.push_back(std::to_string(operation) + " " + path + " '" + value + "' " + state);
        if (operation < 8)
            change_texts(operation, path, value);
        else if (operation < 14)
            change_states(operation, path, state);
        else if (operation < 22)
            change_lists(operation, path, value);
        else
            change_surroundings();
    }

    void change_texts(int operation, const std::string& path, const std::string& value) {
        switch (operation) {
        case 0:
            app_->set_text(path, value);
            plain_.texts[path] = value;
            break;
        case 1:
            app_->set_source(path, value);
            plain_.sources[path] = value;
            if (value.empty())
                plain_.sources.erase(path);
            break;
        case 2:
            app_->set_href(path, value);
            plain_.hrefs[path] = value;
            break;
        case 3:
            app_->set_data(path, value);
            plain_.datas[path] = value;
            break;
        case 4: {
            const double height = dice_.below(3) * 50;
            app_->set_height(path, height);
            plain_.heights[path] = height;
            if (height == 0)
                plain_.heights.erase(path);
            break;
        }
        case 5:
            app_->append_text(path, value);
            if (!value.empty())
                plain_.texts[path] += value;
            break;
        default: {
            const bool visible = dice_.chance(60);
            app_->set_visible(path, visible);
            if (visible)
                plain_.hidden_paths.erase(path);
            else
                plain_.hidden_paths.insert(path);
        }
        }
    }

    void change_states(int operation, const std::string& path, const std::string& state) {
        switch (operation) {
        case 8:
            app_->add_state(path, state);
            plain_.node_states[path].insert(state);
            break;
        case 9:
            app_->remove_state(path, state);
            plain_.node_states[path].erase(state);
            break;
        case 10:
            app_->toggle_state(path, state);
            toggle(path, state);
            break;
        case 11:
            app_->set_checked(path, true);
            plain_.node_states[path].insert("Checked");
            break;
        case 12:
            if (dice_.chance(10)) {
                app_->add_global_state(state);
                plain_.global_states.insert(state);
            }
            break;
        default:
            change_viewport();
        }
    }

    void change_viewport() {
        const double width = dice_.pick(std::array{500.0, 600.0, 601.0, 900.0, 901.0});
        const bool narrow = width <= 600;
        const bool medium = !narrow && width <= 900;
        auto& states = plain_.global_states;
        if (narrow != states.contains("Narrow") || medium != states.contains("Medium")) {
            states.erase("Narrow");
            states.erase("Medium");
            if (narrow)
                states.insert("Narrow");
            else
                states.erase("ControlsHidden");
            if (medium)
                states.insert("Medium");
        }
        app_->set_viewport_width(width);
        const double height = dice_.below(4) * 100.25;
        plain_.viewport_height = std::round(height);
        app_->set_viewport_height(height);
    }

    std::vector<ListEntry> random_rows() {
        std::vector<ListEntry> rows;
        const bool repeat = dice_.chance(15);
        std::set<std::string> used;
        for (int i = dice_.below(7); i > 0; --i) {
            ListEntry row{repeat || dice_.chance(15) ? dice_.pick(row_ids)
                                                     : "r" + std::to_string(dice_.below(5)),
                          {}};
            if (!used.insert(row.id).second && !repeat)
                continue;
            for (const std::string& key : field_keys) {
                if (dice_.chance(60))
                    row.fields[key] = dice_.pick(values);
            }
            rows.push_back(row);
        }
        return rows;
    }

    void change_lists(int operation, const std::string& path, const std::string& value) {
        if (operation == 14) {
            std::vector<ComboItem> items;
            for (int i = dice_.below(4); i > 0; --i)
                items.push_back({dice_.pick(values), "label"});
            std::string& selection = plain_.selections[path];
            auto selects = [&](const ComboItem& item) { return item.value == selection; };
            if (items.empty())
                selection.clear();
            else if (std::none_of(items.begin(), items.end(), selects))
                selection = items.front().value;
            plain_.options[path] = items;
            app_->set_options(path, items);
            return;
        }
        if (operation == 15) {
            for (const ComboItem& item : plain_.options[path]) {
                if (item.value == value)
                    plain_.selections[path] = value;
            }
            if (dice_.chance(50))
                app_->set_selected(path, value);
            else
                app_->dispatch_event(path, "select:" + value);
            return;
        }
        const std::string key = dice_.pick(list_keys);
        std::vector<ListEntry> rows = random_rows();
        if (dice_.chance(40)) { // the same rows again, one of them perhaps changed
            rows = plain_.rows[key];
            if (!rows.empty() && dice_.chance(70))
                rows[static_cast<std::size_t>(dice_.below(static_cast<int>(rows.size())))]
                    .fields[dice_.pick(field_keys)] = value;
        }
        plain_.rows[key] = rows;
        app_->set_rows(key, rows);
    }

    void change_surroundings() {
        switch (dice_.below(7)) {
        case 0:
        case 1:
            app_->set_theme(dice_.pick(app_->themes()).first);
            break;
        case 2:
            app_->add_theme_text(random_theme(dice_, dice_.pick(theme_names)));
            break;
        case 3:
            app_->remove_theme(dice_.pick(app_->themes()).first);
            break;
        case 4:
            app_->mobile_font_scale = dice_.chance(50) ? 1.25 : 2;
            break;
        case 5: // a value behind the application's back
            app_->engine().find_layer("Theme")->find_attribute("Primary")->set_value(
                dice_.pick(values));
            break;
        default:
            if (dice_.chance(20)) { // and a new layer
                auto layer =
                    std::make_unique<Layers::LLayer>("N" + std::to_string(dice_.below(99)));
                app_->engine().find_layer("App")->add_child(std::move(layer));
            }
        }
    }

    Dice dice_;
    TestApp app_;
    Plain::State plain_;
    Plain::Render expected_;
    ModelView view_;
    std::vector<std::string> log_;
    std::string clicked_;
    bool first_ = true;
    bool paths_distinct_ = true;
};

class RenderProperty : public testing::TestWithParam<unsigned> {};

TEST_P(RenderProperty, EqualsAPlainRenderAfterAnyOperations) {
    const unsigned first_seed = GetParam();
    for (unsigned seed = first_seed; seed < first_seed + 40; ++seed) {
        World world(seed);
        for (int step = 0; step < 25; ++step) {
            world.step();
            if (HasFatalFailure() || HasNonfatalFailure()) {
                ADD_FAILURE() << "seed " << seed << " step " << step << "\n" << world.log();
                return;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RenderProperty, testing::Values(1, 1001, 2001, 3001));

} // namespace
} // namespace Corvel
