// What an animated image costs: reading it once, and each of its 60 frames a second.

#include "svg/svg_animation.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

using Corvel::SvgAnimation;

std::string shipped_icon(const std::string& name) {
    std::ifstream file(std::filesystem::path(SOURCE_ROOT) / "icons" / (name + ".svg"));
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// An icon of some 6 KB whose frames hold some 40 animated numbers: six matrices and four opacities.
std::string busy_icon() {
    const std::string outline =
        " d=\"M4.38 12A7.62 7.62 0 0 1 17.67 6.9L19.93 8.86A0.88 0.88 0 0 0 "
        "21.07 7.54L18.89 5.65A9.38 9.38 0 0 0 2.62 12Z";
    std::string text = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 24 24\">\n";
    for (int i = 0; i < 10; ++i) {
        text += "  <path id=\"part-" + std::to_string(i) + "\" fill=\"#808080\"";
        for (int part = 0; part < 4; ++part)
            text += part == 0 ? outline : outline.substr(4);
        text += "\">\n    <animate";
        text += i < 6 ? "Transform type=\"rotate\" values=\"0 12 12; 115.3 11 13; 360 12 12\""
                      : " attributeName=\"opacity\" values=\"0.1;0.931;0.2\"";
        text += " calcMode=\"spline\" keySplines=\"0.4 0 0.2 1; 0.4 0 0.2 1\" dur=\"1.7s\" "
                "repeatCount=\"indefinite\"/>\n  </path>\n";
    }
    return text + "</svg>\n";
}

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
