// What style files cost: reading them, linking them, and reading styles off the tree.

#include "form_style.h"
#include "layers/attribute_links.h"
#include "layers/base_resolution.h"
#include "layers/inheritance.h"
#include "layers/layer_builder.h"
#include "layers/lexer.h"
#include "layers/load_limits.h"
#include "layers/parser.h"
#include "layers/style_reader.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <optional>
#include <stdexcept>

namespace {

using namespace Layers;

/// A style file of about `size` bytes.
std::string style_file(std::int64_t size) {
    const auto row_size = static_cast<std::int64_t>(Bench::form_rows(1000, 1000, "    ").size());
    return Bench::form_theme + "Corvel:\n  Box\n  Text\n  Editor\n  Button\n  Icon\nApp:\n" +
           Bench::form_rows(0, static_cast<int>(size / row_size), "    ");
}

FileNode parse(const std::string& text) {
    Lexer lexer(text);
    Parser parser(lexer);
    FileNode file = parser.parse_file();
    if (!lexer.diagnostics().empty() || !parser.diagnostics().empty())
        throw std::runtime_error("the sample has faults");
    return file;
}

void load(LLayer& root, const std::string& text) {
    LoadLimits limits;
    limits.begin_file({}, text.size());
    LayerBuilder(root, limits).pour(parse(text), {});
    resolve_bases(root);
    for (const std::unique_ptr<LObject>& child : root.children())
        if (LLayer* const layer = child->as_layer())
            link_layer(*layer, limits);
    link_attributes(root);
}

void count_bytes(benchmark::State& state, const std::string& text) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void lex(benchmark::State& state) {
    const std::string text = style_file(state.range(0));
    for (auto _ : state) {
        Lexer lexer(text);
        benchmark::DoNotOptimize(lexer.tokenize().data());
    }
    count_bytes(state, text);
}

void lex_and_parse(benchmark::State& state) {
    const std::string text = style_file(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(parse(text).layers.data());
    count_bytes(state, text);
}

// The tree is freed outside of the time.
void load_whole(benchmark::State& state) {
    const std::string text = style_file(state.range(0));
    for (auto _ : state) {
        std::optional<LLayer> root(std::in_place, "");
        load(*root, text);
        state.PauseTiming();
        root.reset();
        state.ResumeTiming();
    }
    count_bytes(state, text);
}

// All rows of a tree, after a value of the theme has changed, with kept readers or from nothing.
void read_styles(benchmark::State& state) {
    LLayer root("");
    load(root, style_file(1'000'000));
    std::vector<const LLayer*> layers;
    std::vector<StyleReader> readers;
    for (const std::unique_ptr<LObject>& row : root.find_layer("App")->children()) {
        layers.push_back(row->as_layer());
        readers.emplace_back(row->as_layer());
    }
    const bool kept = state.range(0) != 0;
    const std::vector<std::string> active{"Narrow", "Hover"};
    LAttribute& primary = *root.find_layer("Theme")->find_attribute("Primary");
    int round = 0;
    for (auto _ : state) {
        primary.set_value("#" + std::to_string(100000 + round++ % 2));
        for (std::size_t i = 0; i < layers.size(); ++i)
            benchmark::DoNotOptimize(kept ? readers[i].read(active).width
                                          : read_node_style(layers[i], active).width);
    }
    state.SetLabel(kept ? "kept readers" : "from nothing");
    state.counters["per_layer"] = benchmark::Counter(static_cast<double>(layers.size()),
                                                     benchmark::Counter::kIsIterationInvariantRate |
                                                         benchmark::Counter::kInvert);
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(100'000)->Arg(1'000'000)->Arg(10'000'000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(lex)->Apply(sizes);
BENCHMARK(lex_and_parse)->Apply(sizes);
BENCHMARK(load_whole)->Apply(sizes);
BENCHMARK(read_styles)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
