#include "builder/output/old_output.h"

#include <algorithm>
#include <thread>

namespace Lumenfold::Builder {

namespace {

/// Fewer units than this are looked at faster than a thread starts.
constexpr std::size_t WORTH_A_THREAD = 50;

void look_at(std::vector<ListedUnit>& units, std::size_t begin, std::size_t end, int base) {
    for (std::size_t i = begin; i < end; ++i)
        for (ListedFile& file : units[i].files)
            file.as_left = file.stamp && file_stamp(base, file.path.c_str()) == file.stamp;
}

} // namespace

OldOutput::OldOutput(OutputList list, int base)
    : list_(std::move(list)) {
    std::vector<ListedUnit>& units = list_.units;
    const std::size_t half = units.size() < WORTH_A_THREAD ? 0 : units.size() / 2;
    std::thread other;
    if (half > 0)
        other = std::thread([&units, half, base] { look_at(units, 0, half, base); });
    look_at(units, half, units.size(), base);
    if (other.joinable())
        other.join();
    for (const ListedUnit& unit : units)
        units_.emplace(unit.name, &unit);
}

const ListedUnit* OldOutput::unit(std::string_view name) const {
    const auto found = units_.find(name);
    return found == units_.end() ? nullptr : found->second;
}

const OldOutput::Place* OldOutput::place(std::string_view path) {
    if (files_.empty())
        for (const ListedUnit& unit : list_.units)
            for (const ListedFile& file : unit.files)
                files_.emplace(file.path, Place{&unit, &file});
    const auto found = files_.find(path);
    return found == files_.end() ? nullptr : &found->second;
}

const ListedFile* OldOutput::file(std::string_view path) {
    const Place* found = place(path);
    return found ? found->file : nullptr;
}

const ListedUnit* OldOutput::owner(std::string_view path) {
    const Place* found = place(path);
    return found ? found->unit : nullptr;
}

bool is_intact(const ListedUnit& unit) {
    return !unit.sign.empty() && std::all_of(unit.files.begin(), unit.files.end(),
                                             [](const ListedFile& file) { return file.as_left; });
}

} // namespace Lumenfold::Builder
