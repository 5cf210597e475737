#include "layers/attribute_table.h"
#include "layers/attributes.h"
#include "layers/object_records.h"

#include <algorithm>
#include <array>

namespace Layers {
namespace {

using Corvel::Fill;
using Corvel::NodeStyle;

/// One value that an attribute may have, for the case that some states hold.
struct Candidate {
    const AttributeValue* value;
    std::uint32_t first_state; ///< into `Plan::state_indexes`
    std::uint32_t state_count;
};

/// A known attribute. Of its candidates the first whose states hold is in force; the last needs
/// none.
struct KnownAttribute {
    std::size_t entry; ///< into the attribute table
    std::size_t first_candidate;
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
    std::vector<Candidate> candidates;
    std::vector<std::uint32_t> state_indexes;  ///< into `state_names`
    std::vector<std::string_view> state_names; ///< all that occur, each once
    std::vector<char> active;                  ///< for each of them, whether it holds
    std::vector<StateVariant> variants;        ///< of the attribute being looked at

    void prepare();
    void activate(const std::vector<std::string>& active_states);
    template <class IsRead>
    void find_known(std::vector<KnownAttribute>& known, const LLayer& from, IsRead is_read);
    void add_candidates(const LAttribute& attribute);
    const std::vector<StateVariant>& variants_of(const LAttribute& attribute);
    std::uint32_t index_of_state(std::string_view name);
    const AttributeValue& pick(const KnownAttribute& attribute) const;
    void read_into(NodeStyle& style, Fill& fill, const std::vector<KnownAttribute>& known) const;
};

void StyleReader::Plan::prepare() {
    attributes.clear();
    border_attributes.clear();
    candidates.clear();
    state_indexes.clear();
    state_names.clear();
    shape_revision = tree_revisions.shape;
    find_known(attributes, *layer, [](std::size_t entry) { return entry != border_thickness; });
    if (const LLayer* const border = layer->find_layer("Border"))
        find_known(border_attributes, *border,
                   [](std::size_t entry) { return entry <= border_thickness; });
    active.assign(state_names.size(), 0);
}

// Of two attributes of one name the first counts.
template <class IsRead>
void StyleReader::Plan::find_known(std::vector<KnownAttribute>& known, const LLayer& from,
                                   IsRead is_read) {
    const std::size_t unknown = attribute_table().size();
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
        known.push_back({entry, candidates.size()});
        add_candidates(*attribute);
    }
}

// Follows the attribute's links: at each stop the state variants come first, in the end the value.
void StyleReader::Plan::add_candidates(const LAttribute& attribute) {
    const auto add = [this](const LAttribute& source, std::size_t first_state) {
        candidates.push_back({&source.terminal_value(), static_cast<std::uint32_t>(first_state),
                              static_cast<std::uint32_t>(state_indexes.size() - first_state)});
    };
    for (const LAttribute* stop = &attribute; stop != nullptr; stop = stop->link_target())
        for (const StateVariant& variant : variants_of(*stop)) {
            const std::size_t first_state = state_indexes.size();
            all_states(variant.attribute->name(), [this](std::string_view state) {
                state_indexes.push_back(index_of_state(state));
                return true;
            });
            add(*variant.attribute, first_state);
        }
    add(attribute, state_indexes.size());
}

const std::vector<StateVariant>& StyleReader::Plan::variants_of(const LAttribute& attribute) {
    Records::collect_variants(attribute, variants);
    return variants;
}

std::uint32_t StyleReader::Plan::index_of_state(std::string_view name) {
    const auto found = std::find(state_names.begin(), state_names.end(), name);
    const auto index = static_cast<std::uint32_t>(found - state_names.begin());
    if (found == state_names.end())
        state_names.push_back(name);
    return index;
}

void StyleReader::Plan::activate(const std::vector<std::string>& active_states) {
    for (std::size_t i = 0; i < state_names.size(); ++i)
        active[i] = std::find(active_states.begin(), active_states.end(), state_names[i]) !=
                    active_states.end();
}

const AttributeValue& StyleReader::Plan::pick(const KnownAttribute& attribute) const {
    const Candidate* candidate = &candidates[attribute.first_candidate];
    const auto holds = [this](const Candidate& c) {
        const auto first = state_indexes.begin() + c.first_state;
        return std::all_of(first, first + c.state_count,
                           [this](std::uint32_t state) { return active[state] != 0; });
    };
    while (!holds(*candidate))
        ++candidate;
    return *candidate->value;
}

void StyleReader::Plan::read_into(NodeStyle& style, Fill& fill,
                                  const std::vector<KnownAttribute>& known) const {
    const std::vector<AttributeEntry>& table = attribute_table();
    FillValues fill_values{};
    for (const KnownAttribute& attribute : known) {
        const AttributeValue& value = pick(attribute);
        if (attribute.entry < fill_entry_count)
            fill_values[attribute.entry] = &value;
        else
            std::visit(SetField{style, value}, table[attribute.entry].field);
    }
    fill = make_fill(fill_values);
}

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
    plan_->activate(active_states);
    plan_->read_into(style, style.fill, plan_->attributes);
    plan_->read_into(style, style.border_fill, plan_->border_attributes);
    style.effective_source = style.source;
    return style;
}

NodeStyle read_node_style(const LLayer* layer, const std::vector<std::string>& active_states) {
    return StyleReader(layer).read(active_states);
}

} // namespace Layers
