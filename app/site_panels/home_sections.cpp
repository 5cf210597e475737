#include "app/site_panels/home_sections.h"

#include "app/context/app_context.h"
#include "app/context/json_view.h"
#include "app/editing/edit_queue.h"
#include "app/editing/reload.h"
#include "app/forms/image_import.h"
#include "app/forms/removal.h"
#include "app/site_panels/edit_section_dialog.h"
#include "runtime/corvel_app.h"
#include "site/config_files.h"
#include "site/home_sections.h"
#include "site/path_text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

namespace Lumenfold {

namespace {

const std::string SECTIONS_LIST = "homeSections";

/// A section that the builder makes from the rest of the configuration.
struct BuiltInSection {
    const char* type;
    const char* title;
    const char* subtext;
    const char* flag; ///< field of the row that picks its look
};
constexpr BuiltInSection BUILT_IN[] = {
    {"description", "Website Description", "Display the configured description text",
     "is_description"},
    {"projects", "Projects", "Display the project cards", "is_projects"},
    {"socials", "Socials", "Display the social cards", "is_socials"},
};

/// A section of the page as row and as target.
struct SectionCard {
    Corvel::ListEntry row;
    SectionTarget target;
};

SectionCard make_built_in(const BuiltInSection& section) {
    SectionCard card;
    card.row.fields = {{"title", section.title}, {"subtext", section.subtext}, {section.flag, "1"}};
    card.target.title = section.title;
    return card;
}

SectionCard make_custom(const Json& section, const std::filesystem::path& root) {
    SectionCard card;
    const std::string label = text_at(section, "label");
    card.row.fields = {{"title", label.empty() ? "Custom section" : label}, {"custom", "1"}};
    if (std::string subtext = text_at(section, "subtext"); !subtext.empty())
        card.row.fields["subtext"] = std::move(subtext);
    const std::filesystem::path icon = resolve_image(root, text_at(section, "icon"));
    if (!icon.empty())
        card.row.fields["icon"] = path_to_utf8(icon);
    card.target.custom = true;
    card.target.label = label;
    card.target.title = label.empty() ? "this section" : label;
    card.target.body = text_at(section, "body");
    return card;
}

/// Nothing for a section of a type that this program does not know.
std::optional<SectionCard> make_card(const Json& section, const std::filesystem::path& root) {
    const std::string type = text_at(section, "type");
    if (type == "custom")
        return make_custom(section, root);
    const auto found = std::find_if(std::begin(BUILT_IN), std::end(BUILT_IN),
                                    [&](const BuiltInSection& row) { return type == row.type; });
    if (found == std::end(BUILT_IN))
        return std::nullopt;
    return make_built_in(*found);
}

void move_section(const Context& context, const ShownRecord& shown, int delta) {
    flush_edits(context);
    finish_change(context, "Move Home Section",
                  move_home_section(path_from_utf8(context->edits.path), shown, delta));
}

void ask_to_remove(const Context& context, const SectionTarget& target) {
    const std::string rest =
        target.custom ? "Its content fragment stays on disk." : "You can add it back later.";
    confirm_removal(context, "Remove Home Section",
                    "Remove '" + target.title + "' from the home page? " + rest,
                    [shown = target.shown](const Context& later) {
                        return remove_home_section(path_from_utf8(later->edits.path), shown);
                    });
}

} // namespace

void fill_home_sections(const Context& context, const Json& site) {
    const std::filesystem::path root = image_root(*context);
    context->site.sections.clear();
    std::vector<Corvel::ListEntry> rows;
    std::size_t position = 0;
    for (const Json& section : array_at(member_at(site, "home"), "sections")) {
        if (std::optional<SectionCard> card = make_card(section, root)) {
            card->row.id = "home-" + std::to_string(position);
            card->target.shown = {position,
                                  {{"type", text_at(section, "type")},
                                   {"id", text_at(section, "id")},
                                   {"label", text_at(section, "label")}}};
            context->site.sections[card->row.id] = std::move(card->target);
            rows.push_back(std::move(card->row));
        }
        ++position;
    }
    context->app.set_rows(SECTIONS_LIST, std::move(rows));
}

void wire_home_sections(const Context& context) {
    context->app.on_row_click(SECTIONS_LIST, [context](const std::string&, const std::string& id,
                                                       const std::string& action) {
        const auto found = context->site.sections.find(id);
        if (!anything_is_open(*context) || found == context->site.sections.end())
            return;
        const SectionTarget target = found->second; // a reload refills the map
        if (action == "up")
            move_section(context, target.shown, -1);
        else if (action == "down")
            move_section(context, target.shown, +1);
        else if (action == "edit")
            open_section_editor(context, target.body, target.label);
        else if (action == "remove")
            ask_to_remove(context, target);
    });
}

} // namespace Lumenfold
