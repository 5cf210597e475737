// What an animated image costs: reading it once, and each of its 60 frames a second with its tint.

#include "desktop/media/svg_tint.h"
#include "svg/svg_animation.h"

#include <benchmark/benchmark.h>

#include <QByteArray>

#include <fstream>
#include <iterator>
#include <string>
#include <utility>

namespace {

using Corvel::SvgAnimation;

/// The text of an icon: one of the application's, or one of ./icons with 40 numbers in each frame.
std::string icon(const std::string& name) {
    std::ifstream file;
    for (const char* folder : {"/bench/svg/icons/", "/icons/"})
        if (file.open(SOURCE_ROOT + (folder + name) + ".svg"); file)
            break;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
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

void open_document(benchmark::State& state, const std::string& text) {
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
    const std::string image = SvgAnimation(text).frame_at(16);
    for (auto _ : state)
        benchmark::DoNotOptimize(Corvel::recolor_svg(image, "#e3e3e3").constData());
}

} // namespace

int main(int argc, char** argv) {
    using Run = void (*)(benchmark::State&, const std::string&);
    const std::pair<std::string, Run> kinds[] = {
        {"open/", open_document}, {"frame/", frame}, {"tint/", tint}};
    for (const auto& [kind, run] : kinds)
        for (const char* name : {"spinner", "building", "dots", "wheels", "curves"})
            benchmark::RegisterBenchmark((kind + name).c_str(), run, icon(name));
    benchmark::RegisterBenchmark("open/drawing_1_mb", open_document, large_drawing());
    benchmark::RegisterBenchmark("open/style_5_mb", open_document, large_style());
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
