#include "runtime/render_builder.h"

#include <cmath>

namespace Corvel {
namespace {

const std::string* find_field(const RowContext& row, const std::string& key) {
    if (!row.fields)
        return nullptr;
    auto field = row.fields->find(key);
    return field == row.fields->end() ? nullptr : &field->second;
}

/// Gives a field of a shared style a value. The style is only detached from the nodes that share
/// it if the value differs.
template <class Field, class Value>
void put(SharedStyle& style, Field NodeStyle::*field, const Value& value) {
    if (!(style.get().*field == value))
        style.edit().*field = value;
}

void put_number(SharedStyle& style, double NodeStyle::*field, const std::string* value,
                bool zero_counts) {
    if (!value || value->empty())
        return;
    std::optional<double> number = leading_number(*value);
    if (number && (*number > 0 || (zero_counts && *number == 0)))
        put(style, field, *number);
}

void put_text(SharedStyle& style, std::string NodeStyle::*field, const std::string* value) {
    if (value && !value->empty())
        put(style, field, *value);
}

void bind_field(NodeKind kind, const std::string* value, SharedStyle& style, GrowingText& text) {
    if (kind == NodeKind::Image || kind == NodeKind::Video) {
        put(style, &NodeStyle::effective_source, value ? *value : std::string());
        put(style, &NodeStyle::visible, value && !value->empty());
    } else if (kind == NodeKind::Icon) {
        put_text(style, &NodeStyle::source, value);
    } else if (value) {
        text = *value;
    } else {
        put(style, &NodeStyle::visible, false);
    }
}

struct BindThemes {
    const Theme* active;
    const Theme* card;
};

void bind_piece(const BindPiece& piece, NodeKind kind, const RowContext& row,
                const BindThemes& themes, SharedStyle& style, GrowingText& text) {
    const std::string* value = find_field(row, piece.key);
    switch (piece.kind) {
    case BindKind::ActiveThemeName:
        if (themes.active)
            text = themes.active->name;
        break;
    case BindKind::ActiveThemePublisher:
        if (themes.active)
            text = themes.active->publisher;
        break;
    case BindKind::ThemeName:
        if (themes.card)
            text = themes.card->name;
        break;
    case BindKind::ThemePublisher:
        if (themes.card)
            text = themes.card->publisher;
        break;
    case BindKind::Field:
        bind_field(kind, value, style, text);
        break;
    case BindKind::State: // read before, with the states
        break;
    case BindKind::Href:
        put_text(style, &NodeStyle::href, value);
        break;
    case BindKind::MaxWidth:
        put_number(style, &NodeStyle::max_width, value, false);
        break;
    case BindKind::Aspect:
        put_number(style, &NodeStyle::aspect_ratio, value, false);
        break;
    case BindKind::Indent:
        put_number(style, &NodeStyle::margin_left, value, false);
        break;
    case BindKind::Grow:
        put_number(style, &NodeStyle::layout_grow, value, true);
        break;
    case BindKind::Placeholder:
        put_text(style, &NodeStyle::placeholder, value);
        break;
    case BindKind::Opacity:
        if (row.fields)
            put(style, &NodeStyle::opacity, value && is_switched_on(*value) ? 1.0 : 0.0);
        break;
    }
}

void apply_overrides(const Overrides& overrides, SharedStyle& style, GrowingText& text) {
    if (overrides.text)
        text = *overrides.text;
    if (overrides.source)
        put(style, &NodeStyle::effective_source, *overrides.source);
    if (overrides.href)
        put(style, &NodeStyle::href, *overrides.href);
    if (overrides.data)
        put(style, &NodeStyle::data, *overrides.data);
    if (overrides.height)
        put(style, &NodeStyle::height, *overrides.height);
}

/// Takes `fresh` over unless it says the same: an unchanged node keeps its record, by which the
/// comparison of trees knows it.
template <class Handle>
void replace_if_changed(Handle& current, Handle fresh) {
    if (!(current == fresh))
        current = std::move(fresh);
}

template <class Map>
auto* entry_of(const Map& map, const std::string& path) {
    auto entry = map.find(path);
    return entry == map.end() ? nullptr : &entry->second;
}

} // namespace

void RenderBuilder::refresh(NodeSlot& slot, const Scope& scope) {
    const bool current =
        slot.inherited == scope.states && slot.epoch == cache_.inputs.epoch &&
        slot.context_version == scope.row.version && !slot.touched &&
        (!slot.viewport_dependent || slot.viewport_height == state_.viewport_height);
    if (!current)
        compute(slot, scope);
}

void RenderBuilder::compute(NodeSlot& slot, const Scope& scope) {
    if (slot.touched)
        find_overrides(slot);
    const LayerStyle& layer_style = style_of(slot, scope);
    SharedStyle style = layer_style.style;
    GrowingText text = layer_style.text;
    const Overrides* overrides = slot.details ? &slot.details->overrides : nullptr;
    if (overrides)
        apply_overrides(*overrides, style, text);

    set_mode(slot, layer_style);
    bool has_row_target = false;
    if (slot.mode == ChildMode::Layers) {
        if (layer_style.binds) {
            for (const BindPiece& piece : layer_style.binds->pieces)
                bind_piece(piece, slot.kind, scope.row, {active_, scope.card}, style, text);
        }
        has_row_target = slot.kind == NodeKind::Button && style->intent.starts_with("list:");
    }
    if (state_.withheld_sources.contains(style->effective_source))
        style.edit().effective_source.clear();
    if (scope.card_foreground)
        apply_card_look(slot, scope, style);

    slot.viewport_dependent = style->height_viewport > 0;
    slot.viewport_height = state_.viewport_height;
    if (slot.viewport_dependent && state_.viewport_height > 0 && !(overrides && overrides->height))
        put(style, &NodeStyle::height, std::round(state_.viewport_height * style->height_viewport));

    if (slot.visible != style->visible || slot.has_row_target != has_row_target ||
        (has_row_target && slot.style->intent != style->intent))
        cache_.targets_stale = true;
    slot.visible = style->visible;
    slot.has_row_target = has_row_target;
    replace_if_changed(slot.text, std::move(text));
    replace_if_changed(slot.style, std::move(style));
    slot.inherited = scope.states;
    slot.epoch = cache_.inputs.epoch;
    slot.context_version = scope.row.version;
    slot.touched = false;
    slot.written = false;
}

void RenderBuilder::find_overrides(NodeSlot& slot) {
    const std::string& path = *slot.path;
    Overrides found;
    bool any = false;
    auto look_up = [&](auto*& field, const auto& map) {
        if (!map.empty() && (field = entry_of(map, path)))
            any = true;
    };
    look_up(found.states, state_.node_states);
    look_up(found.text, state_.texts);
    look_up(found.source, state_.sources);
    look_up(found.href, state_.hrefs);
    look_up(found.data, state_.datas);
    look_up(found.height, state_.heights);
    if (slot.kind == NodeKind::ComboBox) {
        look_up(found.items, state_.options);
        look_up(found.selected, state_.selections);
    }
    if (any && !slot.details)
        slot.details = std::make_unique<SlotDetails>();
    if (slot.details)
        slot.details->overrides = found;
}

/// The layer's style under all states of the node, which are left in the slot.
const LayerStyle& RenderBuilder::style_of(NodeSlot& slot, const Scope& scope) {
    const StateSet* states = scope.states;
    if (slot.details && slot.details->overrides.states)
        states = cache_.sets.with_all(states, *slot.details->overrides.states);
    const LayerStyle* layer_style = &slot.plan->style(states, cache_.inputs);
    if (scope.row.fields && layer_style->binds && layer_style->binds->has_states) {
        for (const BindPiece& piece : layer_style->binds->pieces) {
            if (piece.kind != BindKind::State)
                continue;
            const std::string* value = find_field(scope.row, piece.key);
            if (value && is_switched_on(*value))
                states = cache_.sets.with(states, piece.state);
        }
        layer_style = &slot.plan->style(states, cache_.inputs);
    }
    slot.states = states;
    return *layer_style;
}

/// A theme card shows its own theme's colours, whatever theme is in force.
void RenderBuilder::apply_card_look(const NodeSlot& slot, const Scope& scope,
                                    SharedStyle& style) const {
    if (slot.is_card) {
        const Theme& theme = *scope.card;
        const bool is_active = active_ && theme_display_name(theme) == theme_display_name(*active_);
        put(style, &NodeStyle::fill, Fill{theme_value(theme, "Primary"), false});
        put(style, &NodeStyle::border_fill,
            Fill{theme_value(theme, is_active ? "Foreground" : "Tertiary"), false});
        put(style, &NodeStyle::border_thickness, is_active ? 3.0 : 1.0);
    }
    if (slot.kind == NodeKind::Text || slot.kind == NodeKind::Icon)
        put(style, &NodeStyle::text_color, *scope.card_foreground);
}

/// Decides where the node's children come from. Children of another origin are dropped.
void RenderBuilder::set_mode(NodeSlot& slot, const LayerStyle& layer_style) {
    const ChildMode mode = layer_style.binds ? layer_style.binds->mode : ChildMode::Layers;
    RowSlots* rows = slot.details ? slot.details->rows.get() : nullptr;
    const bool same_origin =
        mode == slot.mode &&
        (!rows || mode != ChildMode::Rows || rows->binds->list_key == layer_style.binds->list_key);
    if (same_origin && (mode == ChildMode::Layers || slot.details))
        return;

    release_children(slot);
    slot.children_written = false;
    slot.mode = mode;
    cache_.targets_stale = true;
    if (mode == ChildMode::Layers)
        return;
    if (!slot.details)
        slot.details = std::make_unique<SlotDetails>();
    if (mode == ChildMode::Rows) {
        slot.details->rows = std::make_unique<RowSlots>();
        slot.details->rows->binds = layer_style.binds;
        slot.details->rows->source = &state_.rows[layer_style.binds->list_key];
    } else {
        slot.details->cards = std::make_unique<CardSlots>();
    }
}

} // namespace Corvel
