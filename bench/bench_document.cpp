// Milliseconds to open a saved drawing of 50 functions and draw it (read the file, check
// it, rebuild the graph list, full redraw of a 1600x1000 plot), and to save it (gather the
// drawing, write the JSON, QSaveFile). Run it through bench/run.sh document.
//   bench_document [--rounds N]

#include "model/drawing_file.h"
#include "model/graph_list.h"
#include "plot/coordinates.h"
#include "plot/render.h"

#include <QGuiApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

using namespace curvix;

namespace {

const QSize kSize(1600, 1000);

// Curves a class draws, as in bench_redraw: polynomials, trigonometry, roots, poles, exponentials.
const char* const kFormulas[] = {"sin(x)", "x^2-3", "2x^3-x", "sqrt(x+4)", "1/(x-1)",
                                 "3exp(-x^2)", "ln(x^2+1)", "tan(x)", "abs(x)-2", "cos(2x)+x/3"};

using NullPrompter = model::DialogFreePrompter;

struct FreshState : model::AppState {
    FreshState() { plot::InitPlotDefaults(*this); }
};

// A drawing of 50 functions with a tangent each, guide lines, fills and labels.
void makeDrawing(model::AppState& state)
{
    NullPrompter prompter;
    model::SymbolicLinkCheck links({});
    state.autoColors = true;
    for (int i = 0; i < 50; ++i) {
        QString text = QString::fromLatin1(kFormulas[i % 10]);
        if (i >= 10)
            text += QStringLiteral("+%1").arg(i / 10);
        model::addFunction(state, prompter, links, text, QStringLiteral("f(x)"));
        model::GraphMark mark;
        mark.x = 0.1 * i - 2.5;
        state.graphs.back().marks.push_back(mark);
    }
    state.verticalLines = {-1, 1};
    state.horizontalLines = {2};
    state.fills = {{0.5, -4.5, 0xFF0000}};
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double timeMs(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication app(argc, argv);
    const QStringList args = app.arguments();
    const int rounds = std::max(1, args.value(args.indexOf(QStringLiteral("--rounds")) + 1).toInt());
    const int count = args.contains(QStringLiteral("--rounds")) ? rounds : 21;

    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("fifty.curvix"));
    FreshState original;
    makeDrawing(original);
    plot::RedrawOptions options;
    options.font = QGuiApplication::font();
    QString error;
    if (!model::saveDrawingFile(path, model::drawingFromState(original), &error)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }

    std::vector<double> open, save;
    for (int i = 0; i < count; ++i) {
        open.push_back(timeMs([&] {
            auto state = std::make_unique<FreshState>();
            QImage picture(kSize, QImage::Format_ARGB32_Premultiplied);
            const std::optional<model::Drawing> drawing = model::openDrawingFile(path, &error);
            if (!drawing || !model::applyDrawing(*state, *drawing, &error) || state->graphCount != 50)
                std::abort();
            plot::redraw(*state, picture, plot::redrawOptionsFor(drawing->display, options.font));
        }));
        save.push_back(timeMs([&] {
            if (!model::saveDrawingFile(path, model::drawingFromState(original), &error))
                std::abort();
        }));
    }
    std::printf("open and draw 50 functions median ms = %.2f\n", median(open));
    std::printf("save 50 functions median ms = %.2f\n", median(save));
    return 0;
}
