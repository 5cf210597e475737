#include "checks.h"
#include "colors.h"
#include "layers/attributes.h"
#include "layers/tree_paths.h"
#include "suggestions.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <variant>

namespace CorvelLint {
namespace {

using Layers::AttributeInfo;
using Layers::AttributeKind;
using Layers::LAttribute;

const AttributeInfo* find_in_vocabulary(std::string_view name) {
    const std::vector<AttributeInfo>& vocabulary = Layers::attribute_vocabulary();
    const auto found =
        std::find_if(vocabulary.begin(), vocabulary.end(),
                     [name](const AttributeInfo& info) { return info.name == name; });
    return found != vocabulary.end() ? &*found : nullptr;
}

/// What links make of attributes that the framework does not know.
struct LinkUses {
    std::set<std::string> names;             ///< that links end in
    std::set<const Layers::LObject*> tables; ///< root layers that links with a path lead into
};

LinkUses link_uses(const StyleTree& tree) {
    LinkUses uses;
    tree.for_each_attribute([&](const LAttribute& attribute) {
        const std::string& path = attribute.link_path();
        const std::size_t slash = path.rfind('/');
        uses.names.insert(path.substr(slash + 1));
        const LAttribute* const target = attribute.link_target();
        if (slash != std::string::npos && target != nullptr &&
            target->parent()->parent() == &tree.root())
            uses.tables.insert(target->parent());
    });
    return uses;
}

std::string in_ticks(std::string_view text) {
    return '`' + std::string(text) + '`';
}

std::string in_quotes(std::string_view text) {
    return '"' + std::string(text) + '"';
}

bool names_a_color(std::string_view name) {
    return name == "Fill" || name.ends_with("Color");
}

class ValueChecker {
public:
    ValueChecker(const StyleTree& tree, Findings& findings)
        : tree_(tree)
        , uses_(link_uses(tree))
        , theme_(tree.root().find_layer("Theme"))
        , findings_(findings) {
        for (const AttributeInfo& info : Layers::attribute_vocabulary())
            known_names_.emplace_back(info.name);
        known_names_.insert(known_names_.end(), uses_.names.begin(), uses_.names.end());
    }

    void check(const LAttribute& attribute) {
        if (!tree_.is_declared(attribute))
            return;
        const LAttribute& owner = owner_of(attribute);
        const AttributeInfo* const info = find_in_vocabulary(owner.name());
        if (info == nullptr)
            return check_name(attribute, owner);
        if (owner.name() == "Thickness" && layer_of(attribute).name() != "Border" &&
            !describes_its_parent(layer_of(attribute)))
            add(attribute, owner.name(), "`Thickness` is read in a layer `Border` only",
                "write it inside of `Border << Corvel/Outline`");
        check_value(attribute, *info);
    }

private:
    void check_name(const LAttribute& attribute, const LAttribute& owner) {
        const Layers::LLayer* const layer = &layer_of(attribute);
        if (layer == theme_ || uses_.tables.contains(layer) || uses_.names.contains(owner.name()))
            return;
        add(attribute, owner.name(),
            in_ticks(owner.name()) +
                " is no attribute of the framework, and no link leads to one of "
                "this name",
            did_you_mean(owner.name(), known_names_));
    }

    void check_value(const LAttribute& attribute, const AttributeInfo& info) {
        const LAttribute& end = attribute.terminal();
        const Layers::AttributeValue& value = end.value();
        if (value.index() == 0)
            return;
        const auto* text = std::get_if<std::string>(&value);
        const bool is_number = std::holds_alternative<double>(value);
        if (info.kind == AttributeKind::Flag && !is_number)
            add_kind(attribute, info, " is a flag", "write 0 or 1");
        else if (info.kind == AttributeKind::Number && !is_number)
            add_kind(attribute, info, " reads a number", "write it without quotes");
        else if (info.kind == AttributeKind::String && text == nullptr)
            add_kind(attribute, info, " reads a text", "write it in quotes");
        else if (text != nullptr && !text->empty())
            check_text(attribute, end, info, *text);
    }

    void add_kind(const LAttribute& attribute, const AttributeInfo& info, const std::string& reads,
                  const std::string& help) {
        const bool is_linked = attribute.has_link();
        add(attribute, is_linked ? attribute.link_path() : std::string(info.name),
            in_ticks(info.name) + reads +
                (is_linked ? ", and " + in_ticks(attribute.link_path()) + " is something else"
                           : ""),
            is_linked ? "link to another, or mend the value there" : help);
    }

    // A text is told where it is written, not where a link leads to it.
    void check_text(const LAttribute& attribute, const LAttribute& end, const AttributeInfo& info,
                    const std::string& text) {
        const std::vector<std::string> values = split_words(info.values);
        const LAttribute& written = attribute.has_link() ? end : attribute;
        if (!values.empty() && std::find(values.begin(), values.end(), text) == values.end()) {
            const std::string near = did_you_mean(text, values);
            add(written, in_quotes(text), in_ticks(info.name) + " does not know " + in_ticks(text),
                near.empty() ? "write " + in_words(values) : near);
        } else if (names_a_color(info.name) && !is_color(text) && !is_color_literal(written)) {
            const std::string near =
                text.starts_with('#') ? std::string() : did_you_mean(text, color_names());
            add(written, in_quotes(text), in_ticks(text) + " is no colour",
                near.empty() ? std::string(COLOR_HELP) : near);
        }
    }

    bool is_color_literal(const LAttribute& attribute) const {
        return tree_.color_literals().contains(&attribute);
    }

    void add(const LAttribute& attribute, const std::string& at, const std::string& message,
             const std::string& help) {
        findings_.add(tree_.place_of(attribute), at, message, help);
    }

    const StyleTree& tree_;
    LinkUses uses_;
    const Layers::LLayer* theme_;
    Findings& findings_;
    std::vector<std::string> known_names_;
};

} // namespace

void check_values(const StyleTree& tree, Findings& findings) {
    for (const LAttribute* attribute : tree.color_literals())
        findings.add(tree.place_of(*attribute), "#",
                     "colour literal for " + in_ticks(owner_of(*attribute).name()),
                     "write a quoted colour, or link to one of the theme's");
    ValueChecker checker(tree, findings);
    tree.for_each_attribute([&](const LAttribute& attribute) { checker.check(attribute); });
}

} // namespace CorvelLint
