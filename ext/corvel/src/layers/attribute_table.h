#pragma once

#include "layers/attributes.h"
#include "layers/node_style.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace Layers {

/// The field that an attribute sets; none where several attributes make one field.
using StyleField = std::variant<std::monostate, double Corvel::NodeStyle::*,
                                std::string Corvel::NodeStyle::*, bool Corvel::NodeStyle::*>;

struct AttributeEntry {
    AttributeInfo info;
    StyleField field;
};

/// The first entries of the table. Those of a fill count for a node's layer and for its "Border"
/// layer, "Thickness" for the latter only, all others for the former only.
enum FillEntry : std::size_t {
    fill_color,
    fill_start_color,
    fill_end_color,
    fill_start,
    fill_end,
    fill_entry_count,
    border_thickness = fill_entry_count,
    first_plain_entry,
};

/// The vocabulary with its fields, in reading order.
const std::vector<AttributeEntry>& attribute_table();

/// The index of a name in the table, by the name's hash; the table's size if it is not known.
std::size_t find_entry(std::string_view name, std::uint32_t hash);

} // namespace Layers
