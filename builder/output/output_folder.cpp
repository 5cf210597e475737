#include "builder/output/output_folder.h"

#include "builder/files/fit_path.h"
#include "builder/output/clean_up.h"
#include "builder/output/folder_tree.h"
#include "builder/output/new_output.h"
#include "builder/output/note_store.h"
#include "builder/output/old_output.h"
#include "builder/output/output_place.h"
#include "builder/output/whole_files.h"
#include "builder/report/interruption.h"
#include "site/path_text.h"

#include <atomic>
#include <mutex>
#include <set>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

namespace {

std::string sign_text(std::string_view sign) {
    return sign.empty() ? std::string() : hex_of(hash_of(sign));
}

std::set<std::string> notes_of(const OutputList& list) {
    std::set<std::string> names;
    for (const ListedUnit& unit : list.units)
        if (!unit.note.empty())
            names.insert(unit.note);
    return names;
}

} // namespace

struct OutputFolder::State {
    State(fs::path path, FolderLock held, OutputList list)
        : folder(std::move(path))
        , lock(std::move(held))
        , old(std::move(list), lock.descriptor())
        , tree(folder, [this](std::string_view name) { return old.file(name) != nullptr; })
        , files(folder)
        , notes(folder) {}

    fs::path at(const std::string& path) const { return folder / path_from_utf8(path); }
    bool is_taken(std::string_view path, std::string_view unit);
    std::string refusal(const std::string& path, std::string_view unit);

    bool start(std::error_code& error);
    bool put_down(const OutputList& list, std::error_code& error);
    bool make_folders(std::error_code& error);
    bool has_bytes(const NewFile& file, std::string_view bytes, FileStamp& stamp) const;
    void clean_up(OutputList& list, std::size_t& removed);

    std::string words(const std::string& path, const std::error_code& error) const;
    void fail(const std::string& path, const std::error_code& error);

    fs::path folder;
    FolderLock lock;
    OldOutput old;
    NewOutput now;
    FolderTree tree;
    WholeFiles files;
    NoteStore notes;
    std::vector<std::string> made_folders;
    bool started = false;
    std::atomic<std::size_t> written{0};
    std::atomic<std::size_t> found_equal{0};
    std::atomic<bool> failed{false};
    std::mutex note_mutex;
    std::mutex failure_mutex;
    std::string failure;
};

/// Whether another page has the path, or needs a folder where this one would be, or this one a
/// folder where another is.
bool OutputFolder::State::is_taken(std::string_view path, std::string_view unit) {
    if (now.file(path) || tree.is_wanted(path))
        return true;
    for (std::size_t slash = path.find('/'); slash != std::string_view::npos;
         slash = path.find('/', slash + 1))
        if (now.file(path.substr(0, slash)))
            return true;
    const ListedUnit* owner = old.owner(path);
    return owner && owner->name != unit && now.is_kept(*owner);
}

/// Why a path cannot be the unit's; empty if it can.
std::string OutputFolder::State::refusal(const std::string& path, std::string_view unit) {
    if (!is_fit_path(path) || path.starts_with(".lumenfold-"))
        return "\"" + path + "\" cannot be the address of a page; rename it.";
    if (is_taken(path, unit))
        return "Two pages want the address " + path + "; rename one of them.";
    std::string obstacle;
    const FolderKind parent = tree.way_to(path, obstacle);
    if (parent == FolderKind::Folder && !old.file(path) && exists_at(at(path)))
        obstacle = path;
    else if (parent != FolderKind::Blocked)
        return {};
    return path_to_utf8(at(obstacle)) +
           " is in the way of a page, and no build made it; move it away.";
}

bool OutputFolder::State::start(std::error_code& error) {
    if (!started)
        started = files.start(error) && notes.start(error);
    return started;
}

bool OutputFolder::State::put_down(const OutputList& list, std::error_code& error) {
    return files.write(folder / LIST_FILE, list_text(list), error).has_value();
}

bool OutputFolder::State::make_folders(std::error_code& error) {
    for (std::string& missing : tree.missing()) {
        if (!tree.make(missing, error))
            return false;
        made_folders.push_back(std::move(missing));
    }
    return true;
}

/// Whether what is there has these bytes already; its stamp then.
bool OutputFolder::State::has_bytes(const NewFile& file, std::string_view bytes,
                                    FileStamp& stamp) const {
    if (!file.old)
        return false;
    if (file.old->as_left) {
        stamp = *file.old->stamp;
        return file.old->hash == file.hash && stamp.size == bytes.size();
    }
    const std::optional<FileStamp> seen = file_stamp(lock.descriptor(), file.path.c_str());
    stamp = seen.value_or(FileStamp{});
    return seen && seen->size == bytes.size() && read_file(at(file.path)) == bytes;
}

void OutputFolder::State::clean_up(OutputList& list, std::size_t& removed) {
    const OpenFolder open{folder, lock.descriptor()};
    std::error_code error;
    const std::string stuck = remove_stale_files(open, old.list(), list, tree, removed, error);
    if (error)
        fail(stuck, error);
    std::vector<std::string> folders = old.list().folders;
    folders.insert(folders.end(), made_folders.begin(), made_folders.end());
    list.folders = remove_stale_folders(open, folders, list);
}

std::string OutputFolder::State::words(const std::string& path,
                                       const std::error_code& error) const {
    return path_to_utf8(path.empty() ? folder : at(path)) +
           " cannot be written: " + error.message() +
           ". The pages there stay as they are; mend this and build again.";
}

void OutputFolder::State::fail(const std::string& path, const std::error_code& error) {
    const std::lock_guard guard(failure_mutex);
    if (!failed.exchange(true))
        failure = words(path, error);
}

std::optional<OutputFolder> OutputFolder::open(const fs::path& folder, const fs::path& site_folder,
                                               std::string& problem) {
    OutputList list;
    std::optional<FolderLock> lock = open_place(folder, site_folder, list, problem);
    if (!lock)
        return std::nullopt;
    return OutputFolder(
        std::make_unique<State>(comparable_path(folder), std::move(*lock), std::move(list)));
}

OutputFolder::OutputFolder(std::unique_ptr<State> state)
    : state_(std::move(state)) {}

OutputFolder::~OutputFolder() = default;
OutputFolder::OutputFolder(OutputFolder&&) noexcept = default;
OutputFolder& OutputFolder::operator=(OutputFolder&&) noexcept = default;

const fs::path& OutputFolder::folder() const {
    return state_->folder;
}

bool OutputFolder::is_current(std::string_view unit, std::string_view sign) const {
    const ListedUnit* known = state_->old.unit(unit);
    return known && Builder::is_intact(*known) && known->sign == sign_text(sign);
}

bool OutputFolder::is_intact(std::string_view unit) const {
    const ListedUnit* known = state_->old.unit(unit);
    return known && Builder::is_intact(*known);
}

std::optional<std::string> OutputFolder::note(std::string_view unit) const {
    const ListedUnit* known = state_->old.unit(unit);
    if (!known)
        return std::nullopt;
    return known->note.empty() ? std::string() : state_->notes.read(known->note);
}

std::vector<std::string> OutputFolder::paths(std::string_view unit) const {
    std::vector<std::string> paths;
    if (const ListedUnit* known = state_->old.unit(unit))
        for (const ListedFile& file : known->files)
            paths.push_back(file.path);
    return paths;
}

void OutputFolder::keep(std::string_view unit) {
    if (const ListedUnit* known = state_->old.unit(unit))
        state_->now.keep(*known);
}

void OutputFolder::claim(std::string_view unit, std::string_view sign,
                         const std::vector<std::string>& paths, Messages& messages) {
    NewUnit& made = state_->now.add(unit, sign_text(sign));
    if (const ListedUnit* known = state_->old.unit(unit))
        made.note = known->note;
    for (const std::string& path : paths) {
        std::string refusal = state_->refusal(path, unit);
        if (refusal.empty())
            state_->now.add_file(made, path, state_->old.file(path));
        else
            messages.push_back({Severity::Fault, {}, 0, std::move(refusal)});
    }
}

bool OutputFolder::begin(std::string& problem) {
    if (!state_->now.has_units())
        return true;
    OutputList journal = state_->now.journal(state_->old.list());
    for (std::string& missing : state_->tree.missing())
        journal.folders.push_back(std::move(missing));
    std::error_code error;
    if (state_->start(error) && state_->put_down(journal, error) && state_->make_folders(error))
        return true;
    problem = state_->words({}, error);
    return false;
}

void OutputFolder::write(std::string_view unit, std::string_view path, std::string_view bytes) {
    NewFile* file = state_->now.file(path);
    if (!file || file->unit != unit || state_->failed || is_interrupted())
        return;
    file->hash = hash_of(bytes);
    FileStamp stamp;
    if (state_->has_bytes(*file, bytes, stamp)) {
        file->stamp = stamp;
        ++state_->found_equal;
        return;
    }
    std::error_code error;
    file->stamp = state_->files.write(state_->at(file->path), bytes, error);
    if (file->stamp)
        ++state_->written;
    else
        state_->fail(file->path, error);
}

void OutputFolder::set_note(std::string_view unit, std::string bytes) {
    State& state = *state_;
    NewUnit* made = state.now.unit(unit);
    const ListedUnit* kept = made ? nullptr : state.old.unit(unit);
    if (state.failed || (!made && !(kept && state.now.is_kept(*kept))))
        return;
    std::error_code error;
    std::string name;
    {
        const std::lock_guard guard(state.note_mutex);
        if (state.start(error))
            name = state.notes.keep(bytes, state.files, error);
        if (!error && kept)
            state.now.set_note(*kept, name);
    }
    if (error)
        state.fail({}, error);
    else if (made)
        made->note = std::move(name);
}

bool OutputFolder::finish(OutputCounts& counts, std::string& problem) {
    State& state = *state_;
    if (is_interrupted()) {
        problem = "The build was interrupted. The next one goes on from here.";
        return false;
    }
    const OutputList& old = state.old.list();
    if (!state.failed && !state.now.is_the_same_as(old)) {
        OutputList list = state.now.list(old);
        state.clean_up(list, counts.removed);
        std::error_code error;
        if (!state.failed && !(state.start(error) && state.put_down(list, error)))
            state.fail({}, error);
        if (!state.failed)
            state.notes.remove_others(notes_of(list));
    }
    counts.written = state.written;
    counts.kept = state.found_equal + state.now.kept_files(old);
    problem = state.failure;
    return !state.failed;
}

} // namespace Lumenfold::Builder
