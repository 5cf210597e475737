// What an animated image costs: reading it once, and each of its 60 frames a second.

#include "svg/icon_samples.h"
#include "svg/svg_animation.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

using Corvel::SvgAnimation;

/// A drawing of a megabyte with one element that moves.
std::string large_drawing() {
    std::string text = "<svg>";
    while (text.size() < 1'000'000)
        text += "<g id=\"group\" class=\"a b\"><path fill=\"#ff8800\" d=\"M0 0L10 10H30\"/></g>\n";
    return text + "<g><animate attributeName=\"opacity\" values=\"0;1\"/></g></svg>";
}

/// A style sheet with a font in it.
std::string large_style() {
    return "<svg><style>@font-face{src:url(data:font/woff2;base64," + std::string(5'000'000, 'A') +
           ")}@keyframes k{from{opacity:0}to{opacity:1}}g{animation:k 1s infinite}</style>"
           "<g/></svg>";
}

void play(benchmark::State& state, const std::string& text) {
    const SvgAnimation animation(text);
    double ms = 0;
    std::size_t size = 0;
    for (auto _ : state) {
        const std::string frame = animation.frame_at(ms);
        benchmark::DoNotOptimize(frame.data());
        size = frame.size();
        ms += 16;
    }
    state.counters["bytes"] = static_cast<double>(size);
}

void read(benchmark::State& state, const std::string& text) {
    for (auto _ : state) {
        const SvgAnimation animation(text);
        benchmark::DoNotOptimize(animation.is_animated());
    }
    state.counters["bytes"] = static_cast<double>(text.size());
}

BENCHMARK_CAPTURE(play, spinner, shipped_icon("spinner"));
BENCHMARK_CAPTURE(play, building, shipped_icon("building"));
BENCHMARK_CAPTURE(play, busy_icon_6_kb, busy_icon());
BENCHMARK_CAPTURE(read, spinner, shipped_icon("spinner"));
BENCHMARK_CAPTURE(read, busy_icon_6_kb, busy_icon());
BENCHMARK_CAPTURE(read, drawing_1_mb, large_drawing())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read, style_5_mb, large_style())->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
