#include "builder/output/new_output.h"

#include <algorithm>

namespace Lumenfold::Builder {

namespace {

ListedUnit listed(const NewUnit& unit) {
    ListedUnit listed{unit.name, unit.sign, unit.note, {}};
    for (const NewFile& file : unit.files) {
        if (file.stamp)
            listed.files.push_back({file.path, file.stamp, file.hash, true});
        else
            listed.sign.clear(); // its maker did not come to all of it
    }
    return listed;
}

ListedUnit& unit_in(OutputList& list, std::unordered_map<std::string, std::size_t>& places,
                    const std::string& name) {
    const auto [place, is_new] = places.try_emplace(name, list.units.size());
    if (is_new)
        list.units.push_back({name, {}, {}, {}});
    return list.units[place->second];
}

} // namespace

bool NewOutput::is_the_same_as(const OutputList& old) const {
    return units_.empty() && kept_notes_.empty() &&
           std::all_of(old.units.begin(), old.units.end(),
                       [&](const auto& unit) { return is_kept(unit) && !unit.sign.empty(); });
}

std::size_t NewOutput::kept_files(const OutputList& old) const {
    std::size_t count = 0;
    for (const ListedUnit& unit : old.units)
        count += is_kept(unit) ? unit.files.size() : 0;
    return count;
}

void NewOutput::set_note(const ListedUnit& kept, std::string note) {
    if (note != kept.note)
        kept_notes_[kept.name] = std::move(note);
}

NewUnit& NewOutput::add(std::string_view name, std::string sign) {
    NewUnit& unit = units_.emplace_back();
    unit.name = name;
    unit.sign = std::move(sign);
    units_by_name_.emplace(unit.name, &unit);
    return unit;
}

void NewOutput::add_file(NewUnit& unit, const std::string& path, const ListedFile* old) {
    NewFile& file = unit.files.emplace_back();
    file.path = path;
    file.unit = unit.name;
    file.old = old;
    files_.emplace(file.path, &file);
}

NewUnit* NewOutput::unit(std::string_view name) {
    const auto found = units_by_name_.find(name);
    return found == units_by_name_.end() ? nullptr : found->second;
}

NewFile* NewOutput::file(std::string_view path) {
    const auto found = files_.find(path);
    return found == files_.end() ? nullptr : found->second;
}

OutputList NewOutput::journal(const OutputList& old) const {
    OutputList list = old;
    std::unordered_map<std::string, std::size_t> places;
    for (ListedUnit& unit : list.units) {
        places.emplace(unit.name, places.size());
        if (!is_kept(unit))
            unit.sign.clear();
    }
    for (const NewUnit& unit : units_) {
        ListedUnit& known = unit_in(list, places, unit.name);
        for (const NewFile& file : unit.files)
            if (!file.old)
                known.files.push_back({file.path, std::nullopt, {}, false});
    }
    return list;
}

OutputList NewOutput::list(const OutputList& old) const {
    OutputList list;
    for (const ListedUnit& unit : old.units) {
        if (!is_kept(unit))
            continue;
        list.units.push_back(unit);
        if (const auto note = kept_notes_.find(unit.name); note != kept_notes_.end())
            list.units.back().note = note->second;
    }
    for (const NewUnit& unit : units_)
        list.units.push_back(listed(unit));
    return list;
}

} // namespace Lumenfold::Builder
