// Rebuild and comparison of generated forms, whose rows are layers of their own or one template
// shown for the rows of a list, and of the shipped interface with everything shown. `per_node` is
// seconds for each node of the tree.

#include "form_style.h"
#include "runtime/corvel_app.h"
#include "support/temp_dir.h"

#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <stdexcept>

namespace {

using Corvel::CorvelApp;
using TestSupport::write_file;

constexpr int shipped = 0; ///< in place of a number of nodes

std::string theme(const std::string& name, const std::string& digit) {
    std::string text = "{\"" + name + "\": {";
    for (const char* key : {"Foreground", "Primary", "Secondary", "Tertiary"})
        text += std::string("\"") + key + "\": \"#" + digit + digit + digit + "\", ";
    return text + "\"_meta\": {}}}";
}

/// The folder with a form of `nodes` nodes, written once.
const std::string& form_folder(int nodes, bool list) {
    static std::map<std::pair<int, bool>, std::pair<TestSupport::TempDir, std::string>> folders;
    auto& [dir, folder] = folders[{nodes, list}];
    if (!folder.empty())
        return folder;
    folder = dir.path().string();
    write_file(dir / "styles/widgets/kinds.lyr", Bench::form_prototypes);
    write_file(dir / "styles/mounts/theme.lyr", Bench::form_theme);
    write_file(dir / "themes/dark.json", theme("Dark", "1"));
    write_file(dir / "themes/light.json", theme("Light", "e"));
    const std::string head = "App:\n    Form << Corvel/Box:\n        Fill: Theme/Primary\n";
    write_file(dir / "app/form.lyr",
               head + (list ? "        Bind: \"List:rows\"\n" : "") +
                   Bench::form_rows(0, list ? 0 : nodes / Bench::nodes_per_row - 1, "        "));
    return folder;
}

std::unique_ptr<CorvelApp> make_app(const benchmark::State& state) {
    const int nodes = static_cast<int>(state.range(0));
    const bool list = state.range(1) != 0;
    const std::string root = SOURCE_ROOT;
    auto app = std::make_unique<CorvelApp>();
    app->set_root("App");
    const std::string folder = nodes == shipped ? root + "/ext/corvel" : form_folder(nodes, list);
    const std::string own = nodes == shipped ? root + "/styles" : folder + "/app";
    if (!app->load_assets(folder + "/themes", folder + "/styles", "Dark", {own}))
        throw std::runtime_error("the interface does not load");
    std::vector<Corvel::ListEntry> rows;
    for (int row = 0; list && row < nodes / Bench::nodes_per_row; ++row)
        rows.push_back({"Row N" + std::to_string(row), {}});
    app->set_rows("rows", std::move(rows));
    return app;
}

int count(const Corvel::RenderNode& node) {
    int nodes = 1;
    for (const Corvel::RenderNode& child : node.children)
        nodes += count(child);
    return nodes;
}

void report(benchmark::State& state, CorvelApp& app, std::size_t patches) {
    const int nodes = count(app.build_render_tree());
    state.SetLabel(state.range(0) == shipped ? "shipped" : state.range(1) != 0 ? "rows" : "layers");
    state.counters["nodes"] = nodes;
    state.counters["patches"] = static_cast<double>(patches);
    state.counters["per_node"] = benchmark::Counter(
        nodes, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

/// Times renders, each after one `change`.
template <class Change>
void render_after(benchmark::State& state, Change change) {
    const auto app = make_app(state);
    app->render_patches();
    std::size_t patches = 0;
    int turn = 0;
    for (auto _ : state) {
        change(*app, ++turn % 2 == 0);
        patches = app->render_patches().size();
    }
    report(state, *app, patches);
}

void no_change(benchmark::State& state) {
    render_after(state, [](CorvelApp&, bool) {});
}

void one_text(benchmark::State& state) {
    render_after(state, [](CorvelApp& app, bool even) {
        app.set_text("App/Form/Row N0/Button", even ? "One" : "Two");
    });
}

void theme_switch(benchmark::State& state) {
    render_after(state, [](CorvelApp& app, bool even) {
        app.set_theme(even ? app.themes().begin()->first : app.themes().rbegin()->first);
    });
}

void load(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(make_app(state).get());
}

void first_build(benchmark::State& state) {
    std::unique_ptr<CorvelApp> app;
    for (auto _ : state) {
        state.PauseTiming();
        app = make_app(state);
        state.ResumeTiming();
        benchmark::DoNotOptimize(app->render_patches().data());
    }
    report(state, *app, 1);
}

void interfaces(benchmark::internal::Benchmark* benchmark) {
    benchmark->Args({shipped, 0})->Unit(benchmark::kMicrosecond);
    for (const int list : {0, 1})
        for (const int nodes : {1000, 5000, 20000})
            benchmark->Args({nodes, list});
}

BENCHMARK(load)->Args({shipped, 0})->Unit(benchmark::kMillisecond);
BENCHMARK(first_build)->Apply(interfaces);
BENCHMARK(no_change)->Apply(interfaces);
BENCHMARK(one_text)->Apply(interfaces);
BENCHMARK(theme_switch)->Apply(interfaces);

} // namespace

BENCHMARK_MAIN();
