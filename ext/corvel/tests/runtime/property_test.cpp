// Random interfaces under random operations: every render equals that of a fresh application on
// which the same operations are done, and a view that applies the patches follows.

#include "layers/engine.h"
#include "runtime/app_fixture.h"
#include "support/model_view.h"

#include <gtest/gtest.h>

#include <random>

namespace Corvel {
namespace {

using TestSupport::ModelView;
using TestSupport::TestApp;
using Words = std::vector<std::string>;
using Operation = std::function<void(CorvelApp& app)>;

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

std::string random_layer(Dice& dice, std::size_t depth, const std::string& name) {
    static const Words kinds = {"Box",   "Box",      "Text", "Button",    "Icon",      "Editor",
                                "Image", "Markdown", "QR",   "Check Box", "Combo Box", "Detail"};
    static const Words attributes = {"Visible: 0",
                                     "Visible: 1 @A: 0",
                                     "Text: \"one\" @A: \"two\"",
                                     "Fill: Theme/Primary",
                                     "Text Color: Theme/Foreground @B: \"#fff\"",
                                     "Size.Width: 10 @A & B: 20",
                                     "Size.Height: 20 @Mobile: 30",
                                     "Size.Height Viewport: 0.5",
                                     "Font.Size: 12 @Narrow: 14",
                                     "Source: \"star\" @Checked: \"moon\"",
                                     "Margins.Left: 4 @First: 8 @Last: 2",
                                     "Intent: \"list:open\" @A: \"list:add:alpha\"",
                                     "Border:\n                Fill: Theme/Tertiary"};
    static const Words binds = {"ThemeList",
                                "List:alpha",
                                "List:beta\" @A: \"List:alpha",
                                "Field:k0; State:A:k1",
                                "Field:k1\" @B: \"ThemeList",
                                "Href:k0;Opacity:k1;Grow:k0",
                                "MaxWidth:k0; Indent:k1; Placeholder:k2",
                                "ThemeName;Aspect:k0",
                                "ActiveThemeName;ActiveThemePublisher",
                                "State:B:k2"};
    const std::string indent(depth * 2, ' ');
    std::string text = indent + name + " << Corvel/" + dice.pick(kinds) + ":\n";
    text += indent + "  Tag: \"" + name + "\"\n"; // so that no body is empty
    for (const std::string& attribute : attributes)
        if (dice.chance(15))
            text += indent + "  " + attribute + "\n";
    if (dice.chance(50))
        text += indent + "  Bind: \"" + dice.pick(binds) + "\"\n";
    for (int child = dice.below(depth < 5 ? 4 : 1); child > 0; --child)
        text += random_layer(dice, depth + 1, "L" + std::to_string(child));
    return text;
}

std::string random_interface(Dice& dice) {
    std::string text = "App:\n";
    for (int i = 0; i < 5; ++i)
        text += random_layer(dice, 1, "L" + std::to_string(i));
    return text;
}

std::string random_theme(Dice& dice) {
    std::string members = "\"_meta\": {\"publisher\": \"" + dice.pick(Words{"", "pub"}) + "\"}";
    for (const char* key : {"Foreground", "Primary", "Tertiary"})
        if (dice.chance(70))
            members += std::string(", \"") + key + "\": \"#" + std::to_string(dice.below(9)) + "\"";
    return TestSupport::theme_text(dice.pick(Words{"Plain", "Night", "Day"}), members);
}

const Words values = {"", "0", "false", "1", "12.5", " 7px", "-3", "1e999", "x/y"};

std::vector<ListEntry> random_rows(Dice& dice) {
    std::vector<ListEntry> rows;
    for (const char* id : {"r0", "r1", "r2", "a/b", "", "\xff\x01"}) {
        if (dice.chance(50))
            continue;
        ListEntry row{id, {}};
        for (const char* key : {"k0", "k1", "k2"})
            if (dice.chance(60))
                row.fields[key] = dice.pick(values);
        rows.insert(rows.begin() + dice.below(static_cast<int>(rows.size()) + 1), row);
    }
    return rows;
}

Operation random_operation(Dice& dice, const std::string& path, int number) {
    const std::string value = dice.pick(values);
    const std::string state = dice.pick(Words{"A", "B", "Mobile", "First", "Checked"});
    const std::string key = dice.pick(Words{"alpha", "beta"});
    const std::string theme = random_theme(dice);
    const std::string name = dice.pick(Words{"Plain", "Night (pub)", "Day"});
    const double size = dice.pick(std::vector{0.0, 100.25, 500.0, 601.0, 901.0});
    const std::vector<ListEntry> rows = random_rows(dice);
    const std::string attribute_name = dice.pick(Words{"Fill", "Text", "Source", "Opacity"});
    const std::vector<Operation> choices = {
        [=](CorvelApp& app) { app.set_text(path, value); },
        [=](CorvelApp& app) { app.append_text(path, value); },
        [=](CorvelApp& app) { app.set_source(path, value); },
        [=](CorvelApp& app) { app.set_href(path, value); },
        [=](CorvelApp& app) { app.set_data(path, value); },
        [=](CorvelApp& app) { app.set_height(path, size); },
        [=](CorvelApp& app) { app.set_visible(path, false); },
        [=](CorvelApp& app) { app.set_visible(path, true); },
        [=](CorvelApp& app) { app.add_state(path, state); },
        [=](CorvelApp& app) { app.remove_state(path, state); },
        [=](CorvelApp& app) { app.toggle_state(path, state); },
        [=](CorvelApp& app) { app.set_checked(path, value == "1"); },
        [=](CorvelApp& app) { app.set_viewport_width(size); },
        [=](CorvelApp& app) { app.set_viewport_height(size); },
        [=](CorvelApp& app) {
            app.set_options(path, {{value, "label"}, {"0", "zero"}});
        },
        [=](CorvelApp& app) { app.dispatch_event(path, "select:" + value); },
        [=](CorvelApp& app) { app.set_rows(key, rows); },
        [=](CorvelApp& app) { app.set_rows(key, rows); },
        [=](CorvelApp& app) { app.set_theme(name); },
        [=](CorvelApp& app) { app.add_theme_text(theme); },
        [=](CorvelApp& app) { app.remove_theme(name); },
        [=](CorvelApp& app) { app.mobile_font_scale = 1 + size / 1000; },
        [=](CorvelApp& app) { // behind the application's back, here and below
            Layers::LLayer* const layer = app.engine().find_layer(path);
            Layers::LAttribute* attribute = layer ? layer->find_attribute(attribute_name) : nullptr;
            if (layer && !attribute)
                attribute = layer->add_child(std::make_unique<Layers::LAttribute>(attribute_name))
                                ->as_attribute();
            if (attribute)
                attribute->set_value(value);
        },
        [=](CorvelApp& app) {
            app.engine().find_layer("Theme")->find_attribute("Primary")->set_value(value);
        },
        [=](CorvelApp& app) {
            auto layer = std::make_unique<Layers::LLayer>("N" + std::to_string(number));
            app.engine().find_layer("App")->add_child(std::move(layer));
        },
    };
    return dice.pick(choices);
}

void collect_paths(const RenderNode& node, std::set<std::string>& paths) {
    paths.insert(node.path);
    for (const RenderNode& child : node.children)
        collect_paths(child, paths);
}

/// What clicks on all `paths` tell the handler of rows, and the theme after them.
std::string click_all(CorvelApp& app, const std::set<std::string>& paths) {
    std::string told;
    app.on_any_row_click = [&told](const auto& list, const auto& item, const auto& action) {
        told += list + "|" + item + "|" + action + "\n";
    };
    app.render_patches();
    for (const std::string& path : paths) {
        app.dispatch_event(path, "click");
        told += path + (app.is_checked(path) ? " checked\n" : "\n");
    }
    app.on_any_row_click = {};
    return told + std::string(app.active_theme());
}

void play(unsigned seed) {
    Dice dice(seed);
    const std::string interface = random_interface(dice);
    const Words themes = {random_theme(dice), random_theme(dice)};
    TestApp app(interface, themes);
    ASSERT_NE(app->engine().find_layer("App/L0"), nullptr) << interface;
    std::vector<Operation> operations;
    std::set<std::string> paths; // all that were ever seen
    ModelView view;
    for (int step = 0; step < 12; ++step) {
        SCOPED_TRACE("seed " + std::to_string(seed) + " step " + std::to_string(step));
        collect_paths(app->build_render_tree(), paths);
        for (int i = dice.below(6); i > 0; --i) {
            const int number = static_cast<int>(operations.size());
            operations.push_back(random_operation(dice, dice.pick(paths), number));
            operations.back()(app.app);
        }
        TestApp fresh(interface, themes);
        for (const Operation& operation : operations)
            operation(fresh.app);
        const RenderNode wanted = fresh->build_render_tree();
        ASSERT_EQ(view.apply(app->render_patches()), "");
        ASSERT_EQ(view.mismatch(wanted, ModelView::Order::Any), "");
        ModelView whole;
        const RenderNode tree = app->build_render_tree();
        ASSERT_EQ(whole.apply({{PatchKind::Add, tree.path, {}, 0, tree}}), "");
        ASSERT_EQ(whole.mismatch(wanted, ModelView::Order::AsInTree), "");
        if (step % 6 == 5) { // such clicks are operations as well
            const Operation clicks = [paths](CorvelApp& any) { click_all(any, paths); };
            ASSERT_EQ(click_all(app.app, paths), click_all(fresh.app, paths));
            view = ModelView();
            ASSERT_EQ(view.apply({{PatchKind::Add, "App", {}, 0, app->build_render_tree()}}), "");
            app->render_patches();
            operations.push_back(clicks);
        }
    }
}

TEST(RenderProperty, EqualsAFreshApplicationAfterAnyOperations) {
    for (unsigned seed = 0; seed < 25 && !HasFatalFailure(); ++seed)
        play(seed);
}

} // namespace
} // namespace Corvel
