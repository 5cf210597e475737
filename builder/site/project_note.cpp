#include "builder/site/project_note.h"

#include "builder/site/note_bytes.h"

#include <utility>

namespace Lumenfold::Builder {

namespace {

constexpr std::string_view HEAD = "lumenfold project note 1";

} // namespace

std::string write_note(const ProjectNote& note) {
    NoteWriter writer;
    writer.text(HEAD);
    writer.text(note.inputs);
    writer.list(note.pages, [&](const NotedPage& page) {
        writer.text(page.path);
        writer.text(page.title);
        writer.texts(page.anchors);
    });
    writer.texts(note.files);
    writer.list(note.releases, [&](const NotedRelease& release) {
        for (const std::string* text : {&release.label, &release.tag, &release.date, &release.path})
            writer.text(*text);
    });
    writer.list(note.site_links, [&](const SiteLink& link) {
        writer.text(link.address);
        writer.text(link.file);
        writer.number(link.line);
    });
    writer.list(note.looked_at, [&](const auto& look) {
        writer.text(look.first);
        writer.text(look.second);
    });
    writer.messages(note.messages);
    writer.text(note.tags);
    writer.texts(note.waiting);
    writer.messages(note.repository_messages);
    writer.text(note.search);
    return writer.take();
}

std::optional<ProjectNote> read_note(std::string_view bytes) {
    NoteReader reader(bytes);
    if (reader.text() != HEAD)
        return std::nullopt;
    ProjectNote note;
    note.inputs = reader.text();
    note.pages = reader.list([&] {
        NotedPage page;
        page.path = reader.text();
        page.title = reader.text();
        page.anchors = reader.texts();
        return page;
    });
    note.files = reader.texts();
    note.releases = reader.list([&] {
        NotedRelease release;
        for (std::string* text : {&release.label, &release.tag, &release.date, &release.path})
            *text = reader.text();
        return release;
    });
    note.site_links = reader.list([&] {
        SiteLink link;
        link.address = reader.text();
        link.file = reader.text();
        link.line = reader.number();
        return link;
    });
    note.looked_at = reader.list([&] {
        std::string path = reader.text();
        return std::pair(std::move(path), reader.text());
    });
    note.messages = reader.messages();
    note.tags = reader.text();
    note.waiting = reader.texts();
    note.repository_messages = reader.messages();
    note.search = reader.text();
    if (reader.failed())
        return std::nullopt;
    return note;
}

} // namespace Lumenfold::Builder
