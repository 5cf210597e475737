// What a frame of an animated icon costs from its text to its pixels, beside what the renderer
// alone takes for the same frame.

#include "desktop/media/svg_tint.h"
#include "svg/icon_samples.h"
#include "svg/svg_animation.h"

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QString>
#include <QSvgRenderer>

#include <string>

namespace {

constexpr int icon_size = 48;
constexpr double frame_ms = 16;
const std::string tint = "#e3e3e3";

class Canvas {
public:
    Canvas()
        : image_(icon_size, icon_size, QImage::Format_ARGB32_Premultiplied) {}

    void draw(const QByteArray& frame) {
        renderer_.load(frame);
        image_.fill(Qt::transparent);
        QPainter painter(&image_);
        painter.setRenderHint(QPainter::Antialiasing);
        renderer_.render(&painter);
    }

private:
    QImage image_;
    QSvgRenderer renderer_;
};

void whole_frame(benchmark::State& state, const std::string& text) {
    const Corvel::SvgAnimation animation(text);
    Canvas canvas;
    double ms = 0;
    for (auto _ : state) {
        canvas.draw(Corvel::recolor_svg(QString::fromStdString(animation.frame_at(ms)), tint));
        ms += frame_ms;
    }
}

void renderer_alone(benchmark::State& state, const std::string& text) {
    const Corvel::SvgAnimation animation(text);
    Canvas canvas;
    double ms = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const QByteArray frame =
            Corvel::recolor_svg(QString::fromStdString(animation.frame_at(ms)), tint);
        state.ResumeTiming();
        canvas.draw(frame);
        ms += frame_ms;
    }
}

BENCHMARK_CAPTURE(whole_frame, spinner, shipped_icon("spinner"));
BENCHMARK_CAPTURE(renderer_alone, spinner, shipped_icon("spinner"));
BENCHMARK_CAPTURE(whole_frame, building, shipped_icon("building"));
BENCHMARK_CAPTURE(renderer_alone, building, shipped_icon("building"));
BENCHMARK_CAPTURE(whole_frame, busy_icon_6_kb, busy_icon());
BENCHMARK_CAPTURE(renderer_alone, busy_icon_6_kb, busy_icon());

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
