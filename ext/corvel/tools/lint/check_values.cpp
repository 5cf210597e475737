#include "checks.h"
#include "layers/attributes.h"
#include "layers/tree_paths.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <variant>

namespace CorvelLint {
namespace {

using Layers::AttributeInfo;
using Layers::AttributeKind;
using Layers::LiteralValue;

const AttributeInfo* find_in_vocabulary(std::string_view name) {
    const std::vector<AttributeInfo>& vocabulary = Layers::attribute_vocabulary();
    const auto found =
        std::find_if(vocabulary.begin(), vocabulary.end(),
                     [name](const AttributeInfo& info) { return info.name == name; });
    return found != vocabulary.end() ? &*found : nullptr;
}

/// What links make of attributes that the framework does not know.
struct LinkUses {
    std::set<std::string> names;  ///< that links end in
    std::set<std::string> tables; ///< root layers that links with a path lead into
};

LinkUses link_uses(const StyleTree& tree) {
    LinkUses uses;
    tree.for_each_attribute([&uses](const Layers::LAttribute& attribute) {
        const std::string& path = attribute.link_path();
        const std::size_t slash = path.rfind('/');
        uses.names.insert(path.substr(slash + 1));
        const Layers::LAttribute* const target = attribute.link_target();
        if (slash != std::string::npos && target != nullptr)
            uses.tables.insert(Layers::full_path(*target->parent()));
    });
    std::erase_if(uses.tables,
                  [](const std::string& path) { return path.find('/') != std::string::npos; });
    return uses;
}

// A colour text as views understand it: "#rgb", "#rrggbb" or "#aarrggbb". Others may be names.
bool is_bad_color(std::string_view text) {
    if (!text.starts_with('#'))
        return false;
    text.remove_prefix(1);
    const bool has_digits_only =
        text.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
    return !has_digits_only || (text.size() != 3 && text.size() != 6 && text.size() != 8);
}

std::string in_ticks(std::string_view text) {
    return '`' + std::string(text) + '`';
}

class ValueChecker final : public SourceVisitor {
public:
    ValueChecker(const StyleTree& tree, Findings& findings)
        : uses_(link_uses(tree))
        , findings_(findings) {}

private:
    void on_value(const std::string& path, const std::string& name, const Layers::ValueNode& value,
                  const Place& place) override {
        const AttributeInfo* const info = find_in_vocabulary(name);
        const std::string layer =
            path.substr(0, path.size() - std::min(path.size(), name.size() + 1));
        if (info == nullptr && layer != "Theme" && !uses_.tables.contains(layer) &&
            !uses_.names.contains(name))
            findings_.add(place, in_ticks(name) + " is no attribute of the framework, and no link "
                                                  "leads to one of this name");
        const auto* literal = std::get_if<LiteralValue>(&value);
        if (literal == nullptr)
            return;
        if (std::holds_alternative<Layers::Color>(*literal))
            findings_.add(place, "colour literal for " + in_ticks(name) +
                                     "; write a quoted colour, or link to one of the theme's");
        else if (info != nullptr)
            check_kind(*info, *literal, place);
    }

    void check_kind(const AttributeInfo& info, const LiteralValue& literal, const Place& place) {
        const auto* text = std::get_if<std::string_view>(&literal);
        const bool is_number = std::holds_alternative<double>(literal);
        if (info.kind == AttributeKind::Flag && !is_number)
            findings_.add(place, in_ticks(info.name) + " is a flag; write 0 or 1");
        else if (info.kind == AttributeKind::Number && !is_number)
            findings_.add(place, in_ticks(info.name) + " reads a number");
        else if (info.kind == AttributeKind::String && text == nullptr)
            findings_.add(place, in_ticks(info.name) + " reads a text");
        else if (text != nullptr && is_bad_color(*text) && names_a_color(info.name))
            findings_.add(place, in_ticks(*text) + " is no colour; write six digits, or eight with "
                                                   "the opacity first");
    }

    static bool names_a_color(std::string_view name) {
        return name == "Fill" || name.ends_with("Color");
    }

    LinkUses uses_;
    Findings& findings_;
};

} // namespace

void check_values(const StyleTree& tree, Findings& findings) {
    ValueChecker checker(tree, findings);
    for (const std::unique_ptr<StyleSource>& source : tree.sources())
        if (source->diagnostics.empty())
            checker.visit(*source);
}

} // namespace CorvelLint
