// What style files cost: reading them, linking them, and reading styles off the tree.

#include "layers/attributes.h"
#include "layers/layer_builder.h"
#include "layers/lexer.h"
#include "layers/linker.h"
#include "layers/parser.h"
#include "layers/style_samples.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <optional>
#include <stdexcept>

namespace {

using namespace Layers;

FileNode parse(const std::string& text) {
    Lexer lexer(text);
    Parser parser(lexer);
    FileNode file = parser.parse_file();
    if (!lexer.diagnostics().empty() || !parser.diagnostics().empty())
        throw std::runtime_error("the sample has faults");
    return file;
}

void load(LLayer& root, const std::string& text) {
    LayerBuilder(root).pour(parse(text));
    resolve_bases(root);
    for (const std::unique_ptr<LObject>& child : root.children())
        if (LLayer* const layer = child->as_layer())
            link_layer(*layer);
    link_attributes(root);
}

void count_bytes(benchmark::State& state, const std::string& text) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void lex(benchmark::State& state) {
    const std::string text = LayersBench::style_file(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        Lexer lexer(text);
        benchmark::DoNotOptimize(lexer.tokenize().data());
    }
    count_bytes(state, text);
}
BENCHMARK(lex)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void lex_and_parse(benchmark::State& state) {
    const std::string text = LayersBench::style_file(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(parse(text).layers.data());
    count_bytes(state, text);
}
BENCHMARK(lex_and_parse)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->Arg(10'000'000)
    ->Unit(benchmark::kMillisecond);

// The tree is freed outside of the time.
void load_whole(benchmark::State& state) {
    const std::string text = LayersBench::style_file(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        std::optional<LLayer> root(std::in_place, "");
        load(*root, text);
        state.PauseTiming();
        root.reset();
        state.ResumeTiming();
    }
    count_bytes(state, text);
}
BENCHMARK(load_whole)->Arg(100'000)->Arg(1'000'000)->Arg(10'000'000)->Unit(benchmark::kMillisecond);

void free_tree(benchmark::State& state) {
    const std::string text = LayersBench::style_file(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        std::optional<LLayer> root(std::in_place, "");
        load(*root, text);
        state.ResumeTiming();
        root.reset();
    }
    count_bytes(state, text);
}
BENCHMARK(free_tree)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

/// All layers of a tree with a reader each.
struct LoadedTree {
    LoadedTree() {
        load(root, LayersBench::style_file(1'000'000));
        for (const std::unique_ptr<LObject>& panel :
             root.find_layer("App/Window/Panels")->children())
            for (const std::unique_ptr<LObject>& part : panel->children())
                if (const LLayer* const layer = part->as_layer()) {
                    layers.push_back(layer);
                    readers.emplace_back(layer);
                    attributes += layer->children().size();
                }
    }

    LLayer root{""};
    std::vector<const LLayer*> layers;
    std::vector<StyleReader> readers;
    std::size_t attributes = 0;
};

void count_attributes(benchmark::State& state, const LoadedTree& tree) {
    state.counters["ns/attribute"] = benchmark::Counter(
        static_cast<double>(tree.attributes) * 1e-9,
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    state.counters["layers"] = static_cast<double>(tree.layers.size());
}

void read_styles_once(benchmark::State& state) {
    const LoadedTree tree;
    const std::vector<std::string> active{"Narrow", "Hover"};
    for (auto _ : state)
        for (const LLayer* const layer : tree.layers)
            benchmark::DoNotOptimize(read_node_style(layer, active).width);
    count_attributes(state, tree);
}
BENCHMARK(read_styles_once)->Unit(benchmark::kMillisecond);

// As on a theme switch: the values of the palette change, the tree stays as it is.
void read_styles_again(benchmark::State& state) {
    LoadedTree tree;
    const std::vector<std::string> active{"Narrow", "Hover"};
    LAttribute& primary = *tree.root.find_layer("Theme")->find_attribute("Primary");
    int round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        primary.set_value("#" + std::to_string(100000 + round++ % 2));
        state.ResumeTiming();
        for (const StyleReader& reader : tree.readers)
            benchmark::DoNotOptimize(reader.read(active).width);
    }
    count_attributes(state, tree);
}
BENCHMARK(read_styles_again)->Unit(benchmark::kMillisecond);

void change_palette_value(benchmark::State& state) {
    LoadedTree tree;
    LAttribute& primary = *tree.root.find_layer("Theme")->find_attribute("Primary");
    int round = 0;
    for (auto _ : state)
        primary.set_value("#" + std::to_string(100000 + round++ % 2));
}
BENCHMARK(change_palette_value)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
