// What an animated image costs: reading it once, and each of its 60 frames a second with its tint.

#include "desktop/media/svg_tint.h"
#include "svg/svg_animation.h"

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <QString>

#include <fstream>
#include <iterator>
#include <string>

namespace {

using Corvel::SvgAnimation;

/// The text of one of the application's own icons.
std::string shipped_icon(const std::string& name) {
    std::ifstream file(std::string(SOURCE_ROOT) + "/icons/" + name + ".svg");
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// An icon whose frames hold 40 animated numbers: six matrices and four opacities.
std::string busy_icon() {
    std::string text = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 24 24\">\n";
    for (int i = 0; i < 10; ++i) {
        text += "  <path fill=\"#808080\" d=\"";
        for (int part = 0; part < 4; ++part)
            text += "M4.38 12A7.62 7.62 0 0 1 17.67 6.9L19.93 8.86A0.88 0.88 0 0 0 "
                    "21.07 7.54L18.89 5.65A9.38 9.38 0 0 0 2.62 12Z";
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

void read(benchmark::State& state, const std::string& text) {
    for (auto _ : state)
        benchmark::DoNotOptimize(SvgAnimation(text).is_animated());
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void frame(benchmark::State& state, const std::string& text) {
    const SvgAnimation animation(text);
    double ms = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(animation.frame_at(ms += 16).data());
}

void tint(benchmark::State& state, const std::string& text) {
    const QString image = QString::fromStdString(SvgAnimation(text).frame_at(16));
    for (auto _ : state)
        benchmark::DoNotOptimize(Corvel::recolor_svg(image, "#e3e3e3").constData());
}

BENCHMARK_CAPTURE(frame, spinner, shipped_icon("spinner"));
BENCHMARK_CAPTURE(frame, building, shipped_icon("building"));
BENCHMARK_CAPTURE(frame, busy_icon_6_kb, busy_icon());
BENCHMARK_CAPTURE(tint, building, shipped_icon("building"));
BENCHMARK_CAPTURE(tint, busy_icon_6_kb, busy_icon());
BENCHMARK_CAPTURE(read, spinner, shipped_icon("spinner"));
BENCHMARK_CAPTURE(read, busy_icon_6_kb, busy_icon());
BENCHMARK_CAPTURE(read, drawing_1_mb, large_drawing())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read, style_5_mb, large_style())->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
