#include "builder/site/site_note.h"

#include "builder/report/program_folder.h"
#include "builder/site/note_bytes.h"
#include "builder/site/sign.h"
#include "builder/site/theme_choice.h"
#include "site/path_text.h"

namespace Lumenfold::Builder {

namespace {

constexpr std::string_view HEAD = "lumenfold site note 1";

void add_theme(Sign& sign, const Corvel::Theme& theme) {
    sign.add(theme_display_name(theme)).add(theme.type);
    for (const auto& [key, value] : theme.values)
        sign.add(key).add(theme_value(theme, key));
}

} // namespace

std::string write_site_note(const SiteNote& note) {
    NoteWriter writer;
    writer.text(HEAD);
    writer.text(note.inputs);
    writer.texts(note.files);
    writer.messages(note.messages);
    writer.number(note.pages);
    return writer.take();
}

std::optional<SiteNote> read_site_note(std::string_view bytes) {
    NoteReader reader(bytes);
    if (reader.text() != HEAD)
        return std::nullopt;
    SiteNote note;
    note.inputs = reader.text();
    note.files = reader.texts();
    note.messages = reader.messages();
    note.pages = reader.number();
    if (reader.failed())
        return std::nullopt;
    return note;
}

std::string site_sign(const SiteModel& site, const std::vector<ProjectState>& states,
                      const std::vector<std::string>& files) {
    Sign sign;
    sign.add_file(program_file()).add(site.config.file.text);
    Messages told_elsewhere;
    const SiteThemes themes = choose_themes(site.config, themes_folder(), told_elsewhere);
    add_theme(sign, themes.theme);
    add_theme(sign, themes.other);
    for (const ProjectState& state : states) {
        sign.add(state.note.inputs).add(state.note.tags);
        for (const auto& [path, identity] : state.note.looked_at)
            sign.add(path).add(identity);
    }
    for (const std::string& file : files)
        sign.add(file).add_file(site.config.folder / path_from_utf8(file));
    return sign.hex();
}

} // namespace Lumenfold::Builder
