#include "layers/style_reader.h"

#include "layers/attribute_table.h"
#include "layers/object_records.h"

#include <algorithm>
#include <array>

namespace Layers {
namespace {

using Corvel::Fill;
using Corvel::NodeStyle;

/// A known attribute, with the value that it has in all states or with what decides.
struct KnownAttribute {
    std::size_t entry;        ///< into the attribute table
    const SharedValue* value; ///< null if states decide
    const StateCache* states;

    const AttributeValue& value_under(const ActiveStates& active) const {
        return value != nullptr ? value->get()
                                : Records::of(Records::value_source(*states, active)).value.get();
    }
};

/// The values of the entries of a fill; null for attributes that are missing.
using FillValues = std::array<const AttributeValue*, fill_entry_count>;

const std::string* text_in(const AttributeValue* value) {
    return value != nullptr ? std::get_if<std::string>(value) : nullptr;
}

double number_in(const AttributeValue* value) {
    const double* const number = value != nullptr ? std::get_if<double>(value) : nullptr;
    return number != nullptr ? *number : 0;
}

Fill make_fill(const FillValues& values) {
    const std::string* const start_color = text_in(values[fill_start_color]);
    const std::string* const end_color = text_in(values[fill_end_color]);
    if (start_color != nullptr && end_color != nullptr)
        return {format_number(number_in(values[fill_start])) + ':' + *start_color + ',' +
                    format_number(number_in(values[fill_end])) + ':' + *end_color,
                true};
    if (const std::string* const color = text_in(values[fill_color]))
        return {*color, false};
    return {};
}

struct SetField {
    NodeStyle& style;
    const AttributeValue& value;

    void operator()(std::monostate) const {}
    void operator()(double NodeStyle::*field) const { style.*field = number_in(&value); }
    void operator()(std::string NodeStyle::*field) const {
        if (const std::string* const text = text_in(&value))
            style.*field = *text;
    }
    void operator()(bool NodeStyle::*field) const {
        if (const double* const number = std::get_if<double>(&value))
            style.*field = *number != 0;
    }
};

} // namespace

/// What there is to read in a layer, as found for one shape of the tree.
struct StyleReader::Plan {
    const LLayer* layer;
    std::uint64_t shape_revision = 0;
    std::vector<KnownAttribute> attributes;
    std::vector<KnownAttribute> border_attributes;

    void prepare();
    template <class IsRead>
    static std::vector<KnownAttribute> find_known(const LLayer& from, IsRead is_read);
};

void StyleReader::Plan::prepare() {
    shape_revision = tree_revisions.shape;
    attributes = find_known(*layer, [](std::size_t entry) { return entry != border_thickness; });
    const LLayer* const border = layer->find_layer("Border");
    border_attributes.clear();
    if (border != nullptr)
        border_attributes =
            find_known(*border, [](std::size_t entry) { return entry <= border_thickness; });
}

// Of two attributes of one name the first counts.
template <class IsRead>
std::vector<KnownAttribute> StyleReader::Plan::find_known(const LLayer& from, IsRead is_read) {
    const std::size_t unknown = attribute_table().size();
    std::vector<KnownAttribute> known;
    const auto is_listed = [&known](std::size_t entry) {
        return std::any_of(known.begin(), known.end(),
                           [entry](const KnownAttribute& other) { return other.entry == entry; });
    };
    for (const std::unique_ptr<LObject>& child : from.children()) {
        const LAttribute* const attribute = child->as_attribute();
        if (attribute == nullptr)
            continue;
        const std::size_t entry = find_entry(attribute->name(), Records::name(*attribute).hash());
        if (entry == unknown || !is_read(entry) || is_listed(entry))
            continue;
        const StateCache* const states = Records::state_cache(*attribute);
        const SharedValue* const value =
            states == nullptr ? &Records::of(attribute->terminal()).value : nullptr;
        known.push_back({entry, value, states});
    }
    return known;
}

namespace {

void read_into(NodeStyle& style, Fill& fill, const std::vector<KnownAttribute>& known,
               const ActiveStates& active) {
    const std::vector<AttributeEntry>& table = attribute_table();
    FillValues fill_values{};
    for (const KnownAttribute& attribute : known) {
        const AttributeValue& value = attribute.value_under(active);
        if (attribute.entry < fill_entry_count)
            fill_values[attribute.entry] = &value;
        else
            std::visit(SetField{style, value}, table[attribute.entry].field);
    }
    fill = make_fill(fill_values);
}

} // namespace

StyleReader::StyleReader(const LLayer* layer)
    : plan_(std::make_unique<Plan>()) {
    plan_->layer = layer;
}

StyleReader::~StyleReader() = default;
StyleReader::StyleReader(StyleReader&&) noexcept = default;
StyleReader& StyleReader::operator=(StyleReader&&) noexcept = default;

NodeStyle StyleReader::read(const std::vector<std::string>& active_states) const {
    NodeStyle style;
    if (plan_->layer == nullptr)
        return style;
    if (plan_->shape_revision != tree_revisions.shape)
        plan_->prepare();
    const ActiveStates& active = ActiveStates::of(active_states);
    read_into(style, style.fill, plan_->attributes, active);
    read_into(style, style.border_fill, plan_->border_attributes, active);
    style.effective_source = style.source;
    return style;
}

NodeStyle read_node_style(const LLayer* layer, const std::vector<std::string>& active_states) {
    return StyleReader(layer).read(active_states);
}

} // namespace Layers
