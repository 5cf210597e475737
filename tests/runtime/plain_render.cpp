#include "plain_render.h"

#include "layers/attributes.h"
#include "layers/engine.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace Plain {
namespace {

using namespace Corvel;

struct Context {
    const Strings* fields = nullptr;
    std::string list_key;
    std::string item_id;
};

std::vector<std::string> pieces_of(const std::string& bind) {
    std::vector<std::string> pieces(1);
    for (char c : bind) {
        if (c == ';')
            pieces.emplace_back();
        else
            pieces.back() += c;
    }
    const std::string white = " \t\n\v\f\r";
    for (std::string& piece : pieces) {
        piece.erase(0, piece.find_first_not_of(white));
        piece.erase(piece.find_last_not_of(white) + 1);
    }
    std::erase(pieces, std::string());
    return pieces;
}

/// Whether `text` begins with `prefix`; `rest` is then what follows.
bool begins(const std::string& text, const std::string& prefix, std::string& rest) {
    if (text.compare(0, prefix.size(), prefix) != 0)
        return false;
    rest = text.substr(prefix.size());
    return true;
}

bool switched_on(const std::string& value) {
    return value != "" && value != "0" && value != "false";
}

class Renderer {
public:
    Renderer(CorvelApp& app, const State& state)
        : app_(app)
        , state_(state) {}

    Render render() {
        const Layers::LLayer* root = app_.engine().find_layer(state_.root_name);
        if (!root)
            return std::move(out_);
        auto active = app_.themes().find(app_.active_theme());
        if (active != app_.themes().end())
            active_ = &active->second;
        std::vector<std::string> states(state_.global_states.begin(), state_.global_states.end());
        out_.tree = build_node(root, state_.root_name, states, nullptr, {});
        finish(out_.tree);
        return std::move(out_);
    }

private:
    RenderNode build_node(const Layers::LLayer* layer, const std::string& path,
                          std::vector<std::string> states, const Theme* card,
                          const Context& context) {
        out_.visited.insert(path);
        if (state_.node_states.contains(path))
            for (const std::string& state : state_.node_states.at(path))
                states.push_back(state);
        RenderNode node;
        node.name = layer->name();
        node.path = path;
        node.kind = node_kind_of(layer);
        NodeStyle style = Layers::read_node_style(layer, states);
        if (add_field_states(style.bind, context, states))
            style = Layers::read_node_style(layer, states);
        Layers::apply_mobile_scale(style, layer, states, node.kind == NodeKind::Icon,
                                   app_.mobile_icon_scale, app_.mobile_font_scale,
                                   app_.mobile_size_scale);
        std::string text = style.text_attr;
        override_values(path, node.kind, style, text);
        const std::string bind = style.bind;
        std::string key;
        const bool is_list = bind == "ThemeList" || begins(bind, "List:", key);
        if (!is_list) {
            for (const std::string& piece : pieces_of(bind))
                apply_piece(piece, node.kind, card, context, style, text);
            note_row_target(node.kind, style.intent, path, context);
        }
        node.text = text;
        node.style = style;
        if (bind == "ThemeList")
            build_cards(layer, path, states, node);
        else if (is_list)
            build_rows(layer, path, key, states, node);
        else
            build_children(layer, path, states, card, context, node);
        return node;
    }

    bool add_field_states(const std::string& bind, const Context& context,
                          std::vector<std::string>& states) {
        bool added = false;
        if (!context.fields)
            return false;
        for (const std::string& piece : pieces_of(bind)) {
            std::string rest;
            if (!begins(piece, "State:", rest) || rest.find(':') == std::string::npos)
                continue;
            auto value = context.fields->find(rest.substr(rest.find(':') + 1));
            if (value != context.fields->end() && switched_on(value->second)) {
                states.push_back(rest.substr(0, rest.find(':')));
                added = true;
            }
        }
        return added;
    }

    void override_values(const std::string& path, NodeKind kind, NodeStyle& style,
                         std::string& text) {
        if (state_.texts.contains(path))
            text = state_.texts.at(path);
        if (kind == NodeKind::Markdown && active_)
            style.secondary_text_color = theme_value(*active_, "Secondary");
        if (state_.sources.contains(path))
            style.effective_source = state_.sources.at(path);
        if (state_.hrefs.contains(path))
            style.href = state_.hrefs.at(path);
        if (state_.datas.contains(path))
            style.data = state_.datas.at(path);
        if (state_.heights.contains(path))
            style.height = state_.heights.at(path);
    }

    void apply_piece(const std::string& piece, NodeKind kind, const Theme* card,
                     const Context& context, NodeStyle& style, std::string& text) {
        std::string key;
        if (piece == "ActiveThemeName" && active_)
            text = active_->name;
        else if (piece == "ActiveThemePublisher" && active_)
            text = active_->publisher;
        else if (piece == "ThemeName" && card)
            text = card->name;
        else if (piece == "ThemePublisher" && card)
            text = card->publisher;
        else if (begins(piece, "Field:", key))
            apply_field(key, kind, context, style, text);
        else if (context.fields)
            apply_keyed(piece, *context.fields, style);
    }

    void apply_field(const std::string& key, NodeKind kind, const Context& context,
                     NodeStyle& style, std::string& text) {
        const bool found = context.fields && context.fields->contains(key);
        const std::string value = found ? context.fields->at(key) : "";
        if (kind == NodeKind::Image || kind == NodeKind::Video) {
            style.effective_source = value;
            style.visible = !value.empty();
        } else if (kind == NodeKind::Icon) {
            if (found && !value.empty())
                style.source = value;
        } else if (found) {
            text = value;
        } else {
            style.visible = false;
        }
    }

    void apply_keyed(const std::string& piece, const Strings& fields, NodeStyle& style) {
        std::string key;
        auto value = [&] { return fields.contains(key) ? fields.at(key) : std::string(); };
        auto number = [&](double& field, bool zero_too) {
            try {
                const double parsed = std::stod(value());
                if (parsed > 0 || (zero_too && parsed == 0))
                    field = parsed;
            } catch (const std::logic_error&) {
                // No number, or one out of range: the field stays.
            }
        };
        if (begins(piece, "Href:", key) && !value().empty())
            style.href = value();
        else if (begins(piece, "MaxWidth:", key))
            number(style.max_width, false);
        else if (begins(piece, "Aspect:", key))
            number(style.aspect_ratio, false);
        else if (begins(piece, "Indent:", key))
            number(style.margin_left, false);
        else if (begins(piece, "Grow:", key))
            number(style.layout_grow, true);
        else if (begins(piece, "Placeholder:", key) && !value().empty())
            style.placeholder = value();
        else if (begins(piece, "Opacity:", key))
            style.opacity = switched_on(value()) ? 1 : 0;
    }

    void note_row_target(NodeKind kind, const std::string& intent, const std::string& path,
                         const Context& context) {
        std::string rest;
        if (kind != NodeKind::Button || !begins(intent, "list:", rest))
            return;
        const std::size_t colon = rest.find(':');
        if (!context.list_key.empty())
            out_.row_targets[path] = {context.list_key, context.item_id, rest};
        else if (colon != std::string::npos)
            out_.row_targets[path] = {rest.substr(colon + 1), "", rest.substr(0, colon)};
    }

    std::vector<const Layers::LLayer*> templates_of(const Layers::LLayer* layer) {
        std::vector<const Layers::LLayer*> templates;
        for (const auto& child : layer->children()) {
            const auto* child_layer = dynamic_cast<const Layers::LLayer*>(child.get());
            if (!child_layer)
                continue;
            bool detail = false;
            for (const Layers::LLayer* base = child_layer->base(); base; base = base->base())
                detail = detail || base->name() == "Detail";
            if (!detail)
                templates.push_back(child_layer);
        }
        return templates;
    }

    void build_children(const Layers::LLayer* layer, const std::string& path,
                        const std::vector<std::string>& states, const Theme* card,
                        const Context& context, RenderNode& node) {
        for (const Layers::LLayer* child_layer : templates_of(layer)) {
            const std::string child_path = path + "/" + child_layer->name();
            out_.visited.insert(child_path);
            if (state_.hidden_paths.contains(child_path))
                continue;
            RenderNode child = build_node(child_layer, child_path, states, card, context);
            if (child.style->visible)
                node.children.push_back(child);
        }
    }

    void build_rows(const Layers::LLayer* layer, const std::string& path, const std::string& key,
                    const std::vector<std::string>& states, RenderNode& node) {
        const auto templates = templates_of(layer);
        auto rows = state_.rows.find(key);
        if (templates.empty() || rows == state_.rows.end())
            return;
        for (std::size_t i = 0; i < rows->second.size(); ++i) {
            const ListEntry& row = rows->second[i];
            const bool last = i + 1 == rows->second.size();
            std::vector<std::string> row_states = states;
            if (i == 0)
                row_states.push_back("First");
            if (last)
                row_states.push_back("Last");
            RenderNode item = build_node(templates[0], path + "/" + row.id, row_states, nullptr,
                                         {&row.fields, key, row.id});
            item.name = row.id;
            node.children.push_back(item);
            if (templates.size() < 2 || last)
                continue;
            RenderNode separator =
                build_node(templates[1], path + "/" + row.id + ":sep", states, nullptr, {});
            separator.name = row.id + ":sep";
            if (separator.style->visible)
                node.children.push_back(separator);
        }
    }

    void build_cards(const Layers::LLayer* layer, const std::string& path,
                     const std::vector<std::string>& states, RenderNode& node) {
        const auto templates = templates_of(layer);
        if (templates.empty())
            return;
        const std::string active = active_ ? theme_display_name(*active_) : "";
        for (const auto& [display_name, theme] : app_.themes()) {
            const std::string card_path = path + "/" + display_name;
            RenderNode card = build_node(templates[0], card_path, states, &theme, {});
            card.name = display_name;
            const std::string foreground = theme_value(theme, "Foreground");
            NodeStyle& style = card.style.edit();
            style.fill = {theme_value(theme, "Primary"), false};
            const bool is_active = display_name == active;
            style.border_fill = {is_active ? foreground : theme_value(theme, "Tertiary"), false};
            style.border_thickness = is_active ? 3 : 1;
            colour_texts(card, foreground);
            out_.theme_card_targets[card_path] = display_name;
            node.children.push_back(card);
        }
    }

    void colour_texts(RenderNode& node, const std::string& foreground) {
        if (node.kind == NodeKind::Text || node.kind == NodeKind::Icon)
            node.style.edit().text_color = foreground;
        for (RenderNode& child : node.children)
            colour_texts(child, foreground);
    }

    void finish(RenderNode& node) {
        const std::string& path = node.path;
        if (node.kind == NodeKind::CheckBox)
            out_.checkbox_paths.insert(path);
        if (node.style->height_viewport > 0) {
            out_.uses_viewport_height = true;
            if (state_.viewport_height > 0 && !state_.heights.contains(path))
                node.style.edit().height =
                    std::round(state_.viewport_height * node.style->height_viewport);
        }
        if (node.kind == NodeKind::ComboBox) {
            if (state_.options.contains(path))
                node.items = state_.options.at(path);
            if (state_.selections.contains(path))
                node.selected = state_.selections.at(path);
        }
        for (RenderNode& child : node.children)
            finish(child);
    }

    CorvelApp& app_;
    const State& state_;
    const Theme* active_ = nullptr;
    Render out_;
};

void diff_into(const RenderNode& before, const RenderNode& after,
               std::vector<RenderPatch>& patches) {
    RenderPatch patch;
    patch.path = after.path;
    patch.node = after;
    if (before.kind != after.kind) {
        patch.kind = PatchKind::Replace;
        const std::string& path = after.path;
        patch.parent_path =
            path.substr(0, path.rfind('/') == std::string::npos ? 0 : path.rfind('/'));
        patches.push_back(patch);
        return;
    }
    if (before.text.get() != after.text.get() || before.items.get() != after.items.get() ||
        before.selected.get() != after.selected.get() ||
        !(before.style.get() == after.style.get())) {
        patch.kind = PatchKind::Update;
        patch.node.children.clear();
        patches.push_back(patch);
    }
    std::map<std::string, const RenderNode*> old_children;
    for (const RenderNode& child : before.children)
        old_children[child.name] = &child;
    std::set<std::string> new_names;
    for (const RenderNode& child : after.children)
        new_names.insert(child.name);
    for (const RenderNode& child : before.children) {
        if (new_names.contains(child.name))
            continue;
        patches.emplace_back();
        patches.back().kind = PatchKind::Remove;
        patches.back().path = child.path;
    }
    std::int64_t index = 0;
    for (const RenderNode& child : after.children) {
        if (old_children.contains(child.name)) {
            diff_into(*old_children[child.name], child, patches);
        } else {
            patches.push_back({PatchKind::Add, child.path, after.path, index, child});
        }
        ++index;
    }
}

} // namespace

Render render(Corvel::CorvelApp& app, const State& state) {
    return Renderer(app, state).render();
}

std::vector<Corvel::RenderPatch> diff(const Corvel::RenderNode& before,
                                      const Corvel::RenderNode& after) {
    std::vector<RenderPatch> patches;
    diff_into(before, after, patches);
    return patches;
}

} // namespace Plain
