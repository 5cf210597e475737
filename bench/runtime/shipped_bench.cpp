// The assets that ship with the program: loading and linking them, and the tree of their whole
// interface with every dialog and panel shown.

#include "layers/attributes.h"
#include "layers/engine.h"
#include "runtime/corvel_app.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <stdexcept>

namespace {

const std::string root = SOURCE_ROOT;

std::unique_ptr<Corvel::CorvelApp> load_shipped() {
    auto app = std::make_unique<Corvel::CorvelApp>();
    app->set_root("App");
    if (!app->load_assets(root + "/ext/corvel/themes", root + "/ext/corvel/styles", "",
                          {root + "/styles"}))
        throw std::runtime_error("the shipped assets do not load");
    return app;
}

int count(const Corvel::RenderNode& node) {
    int nodes = 1;
    for (const Corvel::RenderNode& child : node.children)
        nodes += count(child);
    return nodes;
}

void shipped_load(benchmark::State& state) {
    for (auto _ : state) {
        auto app = load_shipped();
        benchmark::DoNotOptimize(app.get());
        state.PauseTiming();
        app.reset();
        state.ResumeTiming();
    }
}

void shipped_first_tree(benchmark::State& state) {
    double nodes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto app = load_shipped();
        state.ResumeTiming();
        const auto patches = app->render_patches();
        state.PauseTiming();
        nodes = count(patches[0].node);
        app.reset();
        state.ResumeTiming();
    }
    state.counters["nodes"] = nodes;
}

void shipped_no_change(benchmark::State& state) {
    auto app = load_shipped();
    app->render_patches();
    for (auto _ : state)
        benchmark::DoNotOptimize(app->render_patches());
}

void shipped_theme_switch(benchmark::State& state) {
    auto app = load_shipped();
    app->render_patches();
    auto theme = app->themes().begin();
    std::size_t patches = 0;
    for (auto _ : state) {
        if (++theme == app->themes().end())
            theme = app->themes().begin();
        app->set_theme(std::string(theme->first));
        patches = app->render_patches().size();
    }
    state.counters["patches"] = static_cast<double>(patches);
}

/// One layer's style from nothing, as a render reads it for a new set of states.
void shipped_style(benchmark::State& state) {
    auto app = load_shipped();
    const Layers::LLayer* button = app->engine().find_layer("Corvel/Primary Button");
    const std::vector<std::string> states = {"Desktop", "Disabled"};
    const Layers::StyleReader reader(button);
    for (auto _ : state)
        benchmark::DoNotOptimize(reader.read(states));
}

BENCHMARK(shipped_load)->Unit(benchmark::kMillisecond);
BENCHMARK(shipped_first_tree)->Unit(benchmark::kMicrosecond);
BENCHMARK(shipped_no_change)->Unit(benchmark::kMicrosecond);
BENCHMARK(shipped_theme_switch)->Unit(benchmark::kMicrosecond);
BENCHMARK(shipped_style);

} // namespace
