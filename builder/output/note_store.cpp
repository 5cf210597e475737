#include "builder/output/note_store.h"

#include "builder/files/content_hash.h"
#include "builder/output/output_place.h"

#include <vector>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

NoteStore::NoteStore(const fs::path& output_folder)
    : folder_(output_folder / NOTES_FOLDER) {}

bool NoteStore::start(std::error_code& error) const {
    fs::create_directory(folder_, error);
    return !error;
}

std::string NoteStore::keep(std::string_view bytes, WholeFiles& files,
                            std::error_code& error) const {
    std::string name = hex_of(hash_of(bytes));
    if (!read(name))
        files.write(folder_ / name, bytes, error);
    return name;
}

std::optional<std::string> NoteStore::read(const std::string& name) const {
    std::optional<std::string> bytes = read_file(folder_ / name);
    if (bytes && hex_of(hash_of(*bytes)) != name)
        return std::nullopt;
    return bytes;
}

void NoteStore::remove_others(const std::set<std::string>& names) const {
    std::vector<fs::path> others;
    std::error_code error;
    for (fs::directory_iterator entry(folder_, error); !error && entry != fs::directory_iterator();
         entry.increment(error))
        if (!names.contains(entry->path().filename().string()))
            others.push_back(entry->path());
    for (const fs::path& other : others)
        fs::remove(other, error);
    if (names.empty())
        fs::remove(folder_, error);
}

} // namespace Lumenfold::Builder
