// Rebuild and comparison of generated forms. `per_node` is seconds for each node of the tree.

#include "runtime/corvel_app.h"
#include "runtime/form_app.h"

#include <benchmark/benchmark.h>

#include <map>
#include <memory>

namespace {

using Bench::FormApp;
using Bench::FormShape;

int count(const Corvel::RenderNode& node) {
    int nodes = 1;
    for (const Corvel::RenderNode& child : node.children)
        nodes += count(child);
    return nodes;
}

struct Form {
    explicit Form(benchmark::State& state)
        : shape(static_cast<FormShape>(state.range(0)))
        , nodes(static_cast<int>(state.range(1)))
        , folder(folder_of(shape, nodes)) {}

    std::unique_ptr<FormApp> make() const {
        return std::make_unique<FormApp>(folder, shape, nodes);
    }

    /// A form is written once for all benchmarks.
    static std::string folder_of(FormShape shape, int nodes) {
        static std::map<std::pair<FormShape, int>, std::string> folders;
        std::string& folder = folders[{shape, nodes}];
        if (folder.empty())
            folder = Bench::write_form(shape, nodes);
        return folder;
    }

    FormShape shape;
    int nodes;
    std::string folder;
};

void report(benchmark::State& state, int nodes) {
    state.SetLabel(state.range(0) == 0 ? "layers" : "rows");
    state.counters["per_node"] = benchmark::Counter(
        nodes, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

/// Fails the benchmark if a render does not give the number of patches that it is about.
void expect_patches(benchmark::State& state, std::size_t found, std::size_t wanted) {
    if (found != wanted)
        state.SkipWithError("another number of patches than expected");
}

void no_change(benchmark::State& state) {
    auto form = Form(state).make();
    form->app.render_patches();
    form->app.render_patches();
    const int nodes = count(form->app.build_render_tree());
    for (auto _ : state) {
        auto patches = form->app.render_patches();
        expect_patches(state, patches.size(), 0);
    }
    report(state, nodes);
}

void one_text(benchmark::State& state) {
    auto form = Form(state).make();
    form->app.render_patches();
    form->app.render_patches();
    const int nodes = count(form->app.build_render_tree());
    const bool rows = state.range(0) != 0;
    int turn = 0;
    for (auto _ : state) {
        // A label in a row shows its field, so the text of a button changes there.
        form->app.set_text(rows ? "App/Form/Row N0/Button" : form->first_label,
                           ++turn % 2 == 0 ? "One" : "Two");
        auto patches = form->app.render_patches();
        expect_patches(state, patches.size(), 1);
    }
    report(state, nodes);
}

void one_hidden(benchmark::State& state) {
    auto form = Form(state).make();
    form->app.render_patches();
    const int nodes = count(form->app.build_render_tree());
    bool visible = true;
    for (auto _ : state) {
        visible = !visible;
        form->app.set_visible("App/Form/Row N0/Icon", visible);
        auto patches = form->app.render_patches();
        expect_patches(state, patches.size(), 1);
    }
    report(state, nodes);
}

void theme_switch(benchmark::State& state) {
    auto form = Form(state).make();
    form->app.render_patches();
    form->app.render_patches();
    const int nodes = count(form->app.build_render_tree());
    int turn = 0;
    for (auto _ : state) {
        form->app.set_theme(++turn % 2 == 0 ? "Dark" : "Light");
        auto patches = form->app.render_patches();
        expect_patches(state, patches.size(), static_cast<std::size_t>(nodes - 1));
    }
    report(state, nodes);
}

void first_build(benchmark::State& state) {
    const Form form(state);
    int nodes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto made = form.make();
        state.ResumeTiming();
        auto tree = made->app.build_render_tree();
        state.PauseTiming();
        nodes = count(tree);
        tree = {};
        made.reset();
        state.ResumeTiming();
    }
    report(state, nodes);
}

void refill_rows(benchmark::State& state) {
    const Form form(state);
    auto made = form.make();
    made->app.render_patches();
    std::vector<Corvel::ListEntry> rows;
    for (int row = 0; row < form.nodes / 5; ++row)
        rows.push_back({"Row N" + std::to_string(row), {{"label", "Row " + std::to_string(row)}}});
    for (auto _ : state) {
        made->app.set_rows("rows", rows);
        benchmark::DoNotOptimize(made->app.render_patches());
    }
    report(state, form.nodes);
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    for (int shape : {0, 1}) {
        for (int nodes : {1000, 5000, 20000})
            benchmark->Args({shape, nodes});
    }
    benchmark->Unit(benchmark::kMicrosecond);
}

BENCHMARK(no_change)->Apply(sizes);
BENCHMARK(one_text)->Apply(sizes);
BENCHMARK(one_hidden)->Apply(sizes);
BENCHMARK(theme_switch)->Apply(sizes);
BENCHMARK(first_build)->Apply(sizes);
BENCHMARK(refill_rows)->Args({1, 1000})->Args({1, 5000})->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
