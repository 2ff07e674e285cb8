// Milliseconds of a full redraw of a 1600x1000 plot with 0, 1, 10 and 50 curves as dots and
// with 10 smooth curves, and its two phases apart: sampling the drawing and painting the
// sampled state; and of writing the picture of 10 curves as PDF and SVG, with its size.

#include "model/graph_list.h"
#include "plot/colors.h"
#include "plot/coordinates.h"
#include "output/vector_picture.h"
#include "plot/render.h"

#include "median_reporter.h"

#include <QThread>

#include <benchmark/benchmark.h>

#include <QBuffer>
#include <QGuiApplication>

#include <cstdio>
#include <map>
#include <memory>
#include <string>

namespace {

using namespace curvix;

const QSize kSize(1600, 1000);

// Curves a class draws: polynomials, trigonometry, roots, poles, exponentials.
const char* const kFormulas[] = {"sin(x)",      "x^2-3",         "2x^3-x",  "sqrt(x+4)",
                                 "1/(x-1)",     "3exp(-x^2)",    "ln(x^2+1)", "tan(x)",
                                 "abs(x)-2",    "cos(2x)+x/3"};

using NullPrompter = model::DialogFreePrompter;

struct Scene {
    model::AppState state;
    QImage picture;
    plot::RedrawOptions options;

    explicit Scene(int curves, bool smooth = false, QSize size = kSize)
        : picture(size, QImage::Format_ARGB32_Premultiplied)
    {
        plot::InitPlotDefaults(state);
        state.smoothCurves = smooth;
        NullPrompter prompter;
        model::SymbolicLinkCheck links({});
        for (int i = 0; i < curves; ++i) {
            QString text = QString::fromLatin1(kFormulas[i % 10]);
            if (i >= 10)
                text += QStringLiteral("+%1").arg(i / 10);
            model::addFunction(state, prompter, links, text, QStringLiteral("f(x)"));
        }
        options.font = QGuiApplication::font();
        plot::redraw(state, picture, options);
    }
};

void fullRedraw(benchmark::State& s)
{
    Scene scene(int(s.range(0)));
    for (auto _ : s) {
        plot::redraw(scene.state, scene.picture, scene.options);
        benchmark::DoNotOptimize(scene.picture.constBits());
    }
}

// The same with the sampling shared out among the pool whatever the number of cores, to
// show what the automatic choice weighs.
void parallelRedraw(benchmark::State& s)
{
    Scene scene(int(s.range(0)));
    for (auto _ : s) {
        plot::sampleDrawing(scene.state, {}, plot::Sampling::Parallel);
        plot::paintSampled(scene.state, scene.picture, scene.options);
        benchmark::DoNotOptimize(scene.picture.constBits());
    }
}

// The same with curves joined by antialiased lines.
void smoothRedraw(benchmark::State& s)
{
    Scene scene(int(s.range(0)), true);
    for (auto _ : s) {
        plot::redraw(scene.state, scene.picture, scene.options);
        benchmark::DoNotOptimize(scene.picture.constBits());
    }
}

// Three fills that cover most of the plot: the regions left and right of the y axis and
// one inside the parabola; each is replayed by every redraw.
void fills(benchmark::State& s)
{
    Scene scene(0);
    NullPrompter prompter;
    model::SymbolicLinkCheck links({});
    model::addFunction(scene.state, prompter, links, QStringLiteral("x^2-4"), QStringLiteral("f(x)"));
    scene.state.fills = {{-3, 3, 0x0000FF}, {3, -3, 0x00FF00}, {0.5, -1, 0xFF0000}};
    scene.options.grid = false;
    plot::redraw(scene.state, scene.picture, scene.options);
    const QImage drawn = scene.picture;
    for (auto _ : s) {
        s.PauseTiming();
        scene.picture = drawn.copy();
        s.ResumeTiming();
        plot::ReplayFills(scene.picture, scene.state, scene.options);
        benchmark::DoNotOptimize(scene.picture.constBits());
    }
}

// Sampling on the pool of threads, as a redraw does, and on the calling thread alone.
void sampling(benchmark::State& s)
{
    Scene scene(int(s.range(0)));
    for (auto _ : s)
        plot::sampleDrawing(scene.state, {}, plot::Sampling::Parallel);
}

void serialSampling(benchmark::State& s)
{
    Scene scene(int(s.range(0)));
    for (auto _ : s)
        plot::sampleDrawing(scene.state, {}, plot::Sampling::Serial);
}

void painting(benchmark::State& s)
{
    Scene scene(int(s.range(0)));
    for (auto _ : s) {
        QPainter painter(&scene.picture);
        plot::paintPlot(scene.state, painter, QSizeF(kSize), &scene.picture, scene.options);
        painter.end();
        benchmark::DoNotOptimize(scene.picture.constBits());
    }
}

// The picture the command line writes by default (800x600) with 10 curves as dots, as a
// PDF (format 0) or an SVG (1); the bytes of the last file are kept for the summary.
std::map<int, qint64> exportBytes;

void exportVector(benchmark::State& s)
{
    const Scene scene(10, false, QSize(800, 600));
    const auto format = s.range(0) == 0 ? output::VectorFormat::Pdf : output::VectorFormat::Svg;
    const output::VectorScene vector{scene.state, scene.options, {}, 1};
    for (auto _ : s) {
        QBuffer file;
        file.open(QIODevice::WriteOnly);
        output::writeVectorPicture(file, format, scene.picture.deviceIndependentSize(), vector, nullptr);
        exportBytes[int(s.range(0))] = file.size();
    }
}

} // namespace

// Wall time throughout: the sampling runs on several threads.
BENCHMARK(fullRedraw)->Arg(0)->Arg(1)->Arg(10)->Arg(50)->Unit(benchmark::kNanosecond)->UseRealTime();
BENCHMARK(parallelRedraw)->Arg(10)->Arg(50)->Unit(benchmark::kNanosecond)->UseRealTime();
BENCHMARK(smoothRedraw)->Arg(10)->Unit(benchmark::kNanosecond)->UseRealTime();
BENCHMARK(fills)->Unit(benchmark::kNanosecond)->UseRealTime();
BENCHMARK(sampling)->Arg(1)->Arg(10)->Arg(50)->Unit(benchmark::kNanosecond)->UseRealTime();
BENCHMARK(serialSampling)->Arg(1)->Arg(10)->Arg(50)->Unit(benchmark::kNanosecond)->UseRealTime();
BENCHMARK(painting)->Arg(1)->Arg(10)->Arg(50)->Unit(benchmark::kNanosecond)->UseRealTime();
BENCHMARK(exportVector)->Arg(0)->Arg(1)->Unit(benchmark::kNanosecond)->UseRealTime();

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);

    auto ms = [&](const char* name, int curves) {
        const auto it = reporter.medianMs.find(std::string(name) + "/" + std::to_string(curves) + "/real_time");
        return it == reporter.medianMs.end() ? -1.0 : it->second;
    };
    std::printf("\n%-8s %12s %14s %18s %12s\n", "curves", "redraw ms", "sample ms", "sample serial ms",
                "paint ms");
    for (int curves : {0, 1, 10, 50}) {
        std::printf("%-8d %12.3f %14.3f %18.3f %12.3f\n", curves, ms("fullRedraw", curves),
                    curves ? ms("sampling", curves) : 0.0, curves ? ms("serialSampling", curves) : 0.0,
                    curves ? ms("painting", curves) : 0.0);
    }
    std::printf("redraw 10 curves 1600x1000 median ms = %.3f\n", ms("fullRedraw", 10));
    std::printf("redraw 50 curves 1600x1000 median ms = %.3f\n", ms("fullRedraw", 50));
    std::printf("sampling shared out on %d cores: redraw 10 curves %.3f ms, 50 curves %.3f ms\n",
                QThread::idealThreadCount(), ms("parallelRedraw", 10), ms("parallelRedraw", 50));
    std::printf("redraw smooth 10 curves 1600x1000 median ms = %.3f\n", ms("smoothRedraw", 10));
    const auto fill = reporter.medianMs.find("fills/real_time");
    std::printf("fill whole plot 1600x1000 median ms = %.3f\n",
                fill == reporter.medianMs.end() ? -1.0 : fill->second);
    for (const auto& [format, name] : {std::pair(0, "pdf"), std::pair(1, "svg")})
        std::printf("export %s 10 curves median ms = %.3f (800x600, %.1f KB)\n", name,
                    ms("exportVector", format), double(exportBytes[format]) / 1024);
    return 0;
}
