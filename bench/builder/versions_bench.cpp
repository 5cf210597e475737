// A project's versions where its repository has ten thousand tags: loose or packed, light or
// annotated, of twenty versions with many patches or of a thousand. `state.range` says which. The
// sign is what a site's build asks of each project of which nothing changed.

#include "builder/repository/repository.h"
#include "builder/repository/version_list.h"
#include "support/temp_dir.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <map>
#include <stdexcept>
#include <string>
#include <tuple>

namespace {

using Lumenfold::Builder::list_versions;
using Lumenfold::Builder::tags_sign;
using TestSupport::write_file;

constexpr int TAGS = 10'000;

using Kind = std::tuple<bool, bool, int>; // packed, annotated, versions

std::string tag_name(int number, int versions) {
    return "1." + std::to_string(number % versions) + '.' + std::to_string(number / versions);
}

/// Commands for "git fast-import": a commit and the annotated tags of it.
std::string history(bool annotated, int versions) {
    const std::string person = " Ada <ada@example.org> 1700000000 +0100\n";
    std::string commands = "commit refs/heads/main\ncommitter" + person +
                           "data 6\nBegin\n\nM 644 inline a\ndata 2\na\n\n";
    for (int i = 0; annotated && i < TAGS; ++i)
        commands += "tag " + tag_name(i, versions) + "\nfrom refs/heads/main\ntagger" + person +
                    "data 8\nrelease\n\n";
    return commands;
}

void run(const std::string& command) {
    if (std::system(command.c_str()) != 0)
        throw std::runtime_error("fails: " + command);
}

/// A project with its repository, made once.
const std::filesystem::path& project_folder(const Kind& kind) {
    static std::map<Kind, TestSupport::TempDir> folders;
    const bool made = folders.contains(kind);
    const std::filesystem::path& folder = folders[kind].path();
    if (made)
        return folder;
    const auto& [packed, annotated, versions] = kind;
    write_file(folder / ".lumenfold-project", R"({"build": {"source_path": "source"}})");
    write_file(folder / "history", history(annotated, versions));
    const std::string source = (folder / "source").string();
    const std::string git = "GIT_CONFIG_GLOBAL=/dev/null git -C '" + source + "' ";
    run("git -c init.defaultBranch=main init -q '" + source + "'");
    run(git + "fast-import --quiet <'" + (folder / "history").string() + "'");
    run(git + "rev-parse main >'" + (folder / "commit").string() + "'");
    const std::string commit = TestSupport::read_file(folder / "commit");
    for (int i = 0; !annotated && i < TAGS; ++i)
        write_file(folder / "source/.git/refs/tags" / tag_name(i, versions), commit);
    if (packed)
        run(git + "pack-refs --all");
    return folder;
}

Kind kind_of(const benchmark::State& state) {
    return {state.range(0) != 0, state.range(1) != 0, static_cast<int>(state.range(2))};
}

void versions(benchmark::State& state) {
    const auto file = project_folder(kind_of(state)) / ".lumenfold-project";
    for (auto _ : state)
        if (list_versions(file).rows.size() != static_cast<std::size_t>(state.range(2)))
            throw std::runtime_error("not all versions were found");
}

void sign(benchmark::State& state) {
    const auto source = project_folder(kind_of(state)) / "source";
    for (auto _ : state)
        benchmark::DoNotOptimize(tags_sign(source));
}

BENCHMARK(versions)
    ->ArgNames({"packed", "annotated", "versions"})
    ->ArgsProduct({{0, 1}, {0, 1}, {20, 1000}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(sign)
    ->ArgNames({"packed", "annotated", "versions"})
    ->Args({0, 0, 20})
    ->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
