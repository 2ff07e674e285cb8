// Milliseconds from a wheel turn or a move of a view drag to the finished frame on the real
// main window (offscreen), with 10 and with 50 curves; from a move of a parameter's slider to
// the frame, with 10 curves that use the parameter; and the peak memory of the process.
// Run it through bench/run.sh interact.
//   bench_interact [--turns N]

#include "app/document_actions.h"
#include "app/frmgraph.h"
#include "app/parameter_actions.h"
#include "app/parameter_panel.h"
#include "app/plot_widget.h"
#include "model/drawing_file.h"
#include "model/graph_list.h"
#include "plot/coordinates.h"

#include <QApplication>
#include <QMouseEvent>
#include <QSlider>
#include <QTemporaryDir>
#include <QWheelEvent>

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <memory>
#include <vector>

using namespace curvix;

namespace {

// Curves a class draws, as in bench_redraw: polynomials, trigonometry, roots, poles, exponentials.
const char* const kFormulas[] = {"sin(x)", "x^2-3", "2x^3-x", "sqrt(x+4)", "1/(x-1)",
                                 "3exp(-x^2)", "ln(x^2+1)", "tan(x)", "abs(x)-2", "cos(2x)+x/3"};

using Clock = std::chrono::steady_clock;

double percentile(std::vector<double> values, double p)
{
    std::sort(values.begin(), values.end());
    const std::size_t at = std::min(values.size() - 1, std::size_t(p * double(values.size())));
    return values[at];
}

double msSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// A drawing file of the given number of curves, written where the window can open it; with
// a parameter, every curve is scaled by it.
QString writeDrawing(const QTemporaryDir& dir, int curves, bool parameter = false)
{
    model::AppState state;
    plot::InitPlotDefaults(state);
    model::DialogFreePrompter prompter;
    model::SymbolicLinkCheck links({});
    state.autoColors = true;
    if (parameter)
        state.parameters.push_back({QStringLiteral("a")});
    for (int i = 0; i < curves; ++i) {
        QString text = QString::fromLatin1(kFormulas[i % 10]);
        if (i >= 10)
            text += QStringLiteral("+%1").arg(i / 10);
        if (parameter)
            text = QStringLiteral("a*(%1)").arg(text);
        model::addFunction(state, prompter, links, text, QStringLiteral("f(x)"));
    }
    const QString path =
        dir.filePath(QStringLiteral("curves%1%2.curvix").arg(curves).arg(parameter ? "a" : ""));
    QString error;
    if (!model::saveDrawingFile(path, model::drawingFromState(state), &error)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        std::exit(1);
    }
    return path;
}

// Sends an event to the plot and waits for the frame it leads to: the window's redraw, then
// the plot area painted to the screen.
double timeToFrame(app::frmgraph& window, QEvent& event)
{
    app::PlotWidget* plot = window.plotArea();
    const int before = window.redrawCount();
    const auto start = Clock::now();
    QApplication::sendEvent(plot, &event);
    while (window.redrawCount() == before)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    plot->repaint();
    return msSince(start);
}

struct Timings {
    std::vector<double> wheel;
    std::vector<double> pan;
};

Timings measure(app::frmgraph& window, int turns)
{
    app::PlotWidget* plot = window.plotArea();
    const QPointF centre = QRectF(plot->rect()).center();
    Timings t;
    // In and out by turns around a point beside the centre, so that the view stays near.
    for (int i = 0; i < turns; ++i) {
        const QPointF at = centre + QPointF(40, -25);
        QWheelEvent wheel(at, plot->mapToGlobal(at), QPoint(), QPoint(0, i % 2 ? -120 : 120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        t.wheel.push_back(timeToFrame(window, wheel));
    }
    QMouseEvent press(QEvent::MouseButtonPress, centre, plot->mapToGlobal(centre), Qt::MiddleButton,
                      Qt::MiddleButton, Qt::NoModifier);
    QApplication::sendEvent(plot, &press);
    for (int i = 1; i <= turns; ++i) {
        // Back and forth along a small circle, as a hand moves.
        const QPointF at = centre + QPointF(30 * std::cos(i * 0.3), 20 * std::sin(i * 0.3));
        QMouseEvent move(QEvent::MouseMove, at, plot->mapToGlobal(at), Qt::NoButton, Qt::MiddleButton,
                         Qt::NoModifier);
        t.pan.push_back(timeToFrame(window, move));
    }
    QMouseEvent release(QEvent::MouseButtonRelease, centre, plot->mapToGlobal(centre), Qt::MiddleButton,
                        Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(plot, &release);
    return t;
}

// A held slider moved a step at a time, back and forth across its range: each move to its
// frame, as a hand drags it.
std::vector<double> measureSlider(app::frmgraph& window, int moves)
{
    QSlider* slider = window.parameters().panel()->findChild<QSlider*>();
    std::vector<double> times;
    if (!slider)
        return times;
    slider->setSliderDown(true);
    const int span = slider->maximum() - slider->minimum();
    for (int i = 1; i <= moves; ++i) {
        const int before = window.redrawCount();
        const auto start = Clock::now();
        slider->setValue(slider->minimum() + (i * 7) % (span + 1));
        while (window.redrawCount() == before)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        window.plotArea()->repaint();
        times.push_back(msSince(start));
    }
    slider->setSliderDown(false);
    return times;
}

// Turns sent together before any frame: how many redraws they cost.
int redrawsOfBurst(app::frmgraph& window, int turns)
{
    app::PlotWidget* plot = window.plotArea();
    const QPointF at = QRectF(plot->rect()).center();
    const int before = window.redrawCount();
    for (int i = 0; i < turns; ++i) {
        QWheelEvent wheel(at, plot->mapToGlobal(at), QPoint(), QPoint(0, i % 2 ? -120 : 120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(plot, &wheel);
    }
    while (window.redrawCount() == before)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::processEvents();
    return window.redrawCount() - before;
}

} // namespace

int main(int argc, char** argv)
{
    // A home of its own: the window's settings, recent files and recovery stay out of the user's.
    QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toLocal8Bit());
    qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toLocal8Bit());
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const QStringList args = application.arguments();
    const int at = args.indexOf(QStringLiteral("--turns"));
    const int turns = at >= 0 ? std::max(5, args.value(at + 1).toInt()) : 60;

    model::DialogFreePrompter prompter;
    for (int curves : {10, 50}) {
        auto window = std::make_unique<app::frmgraph>(prompter);
        window->show();
        // A plot of about 1600x1000, as the redraw benchmark draws.
        const QSize plot = window->plotArea()->size();
        window->resize(window->size() + QSize(1600, 1000) - plot);
        QCoreApplication::processEvents();
        if (!window->document().openFile(writeDrawing(home, curves)) ||
            int(window->state().graphs.size()) != curves) {
            std::fprintf(stderr, "the drawing of %d curves did not open\n", curves);
            return 1;
        }
        QCoreApplication::processEvents();
        const QSize size = window->plotArea()->size();
        const Timings t = measure(*window, turns);
        std::printf("plot %dx%d, %d curves: wheel median ms = %.2f, pan median ms = %.2f\n", size.width(),
                    size.height(), curves, percentile(t.wheel, 0.5), percentile(t.pan, 0.5));
        std::printf("wheel zoom frame %d curves p95 ms = %.2f\n", curves, percentile(t.wheel, 0.95));
        std::printf("pan frame %d curves p95 ms = %.2f\n", curves, percentile(t.pan, 0.95));
        std::printf("burst of 5 wheel turns %d curves redraws = %d\n", curves, redrawsOfBurst(*window, 5));
        // What each redraw adds for undo: the drawing written as its file is.
        std::vector<double> checkpoint;
        for (int i = 0; i < 21; ++i) {
            const auto start = Clock::now();
            const QByteArray bytes = model::writeDrawing(model::drawingFromState(window->state()));
            checkpoint.push_back(msSince(start));
            if (bytes.isEmpty())
                return 1;
        }
        std::printf("undo checkpoint %d curves median ms = %.3f\n", curves, percentile(checkpoint, 0.5));
    }
    {
        auto window = std::make_unique<app::frmgraph>(prompter);
        window->show();
        const QSize plot = window->plotArea()->size();
        window->resize(window->size() + QSize(1600, 1000) - plot);
        QCoreApplication::processEvents();
        if (!window->document().openFile(writeDrawing(home, 10, true))) {
            std::fprintf(stderr, "the drawing with a parameter did not open\n");
            return 1;
        }
        QCoreApplication::processEvents();
        const std::vector<double> slider = measureSlider(*window, turns);
        if (slider.empty()) {
            std::fprintf(stderr, "the parameter has no slider\n");
            return 1;
        }
        std::printf("slider drag frame 10 curves median ms = %.2f\n", percentile(slider, 0.5));
        std::printf("slider drag frame 10 curves p95 ms = %.2f\n", percentile(slider, 0.95));
    }
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("peak memory 50 curves MB = %.1f\n", double(usage.ru_maxrss) / 1024.0);
    return 0;
}
