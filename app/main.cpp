#include "app/cli.h"
#include "app/document_actions.h"
#include "app/frmgraph.h"
#include "app/language.h"
#include "app/plot_widget.h"
#include "app/widget_prompter.h"

#include <QApplication>
#include <QFile>
#include <QGuiApplication>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <ctime>

#include <unistd.h>

using namespace curvix;

namespace {

QtMessageHandler previousHandler = nullptr;

// Qt aborts when no platform plugin starts (a display that is set but cannot be reached):
// a message and exit code 1 instead of a core dump.
void platformStartHandler(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type != QtFatalMsg) {
        if (previousHandler)
            previousHandler(type, context, message);
        return;
    }
    // Qt's advice to reinstall does not help here: its first sentence says what failed.
    const QString firstSentence =
        message.section(QLatin1Char('\n'), 0, 0).section(QLatin1String(". "), 0, 0);
    std::fprintf(stderr, "curvix: the window cannot start: %s\n", qPrintable(firstSentence));
    std::_Exit(1);
}

// Milliseconds since the process started, as the kernel counts its start (in clock ticks,
// so up to one tick more than the truth); -1 when /proc cannot tell.
double msSinceProcessStart()
{
    QFile file(QStringLiteral("/proc/self/stat"));
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    // The name in parentheses may hold spaces: the fields are counted after its end.
    const QByteArray stat = file.readAll();
    const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
    bool ok = false;
    const double startTicks = fields.value(19).toDouble(&ok); // field 22, starttime
    timespec now{};
    if (!ok || clock_gettime(CLOCK_BOOTTIME, &now) != 0)
        return -1;
    const double nowMs = double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
    return nowMs - startTicks * 1e3 / double(sysconf(_SC_CLK_TCK));
}

// Once the plot is first painted the program tells how long it took and quits.
class FirstFrameWatch : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && !m_seen) {
            m_seen = true;
            // After this paint and the window's flush, which follow in the same pass.
            QTimer::singleShot(0, this, [] {
                std::printf("first frame ms since process start = %.1f\n", msSinceProcessStart());
                std::fflush(stdout);
                QCoreApplication::quit();
            });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    bool m_seen = false;
};

} // namespace

int main(int argc, char* argv[])
{
    // The window's class and the launcher's file name match, so the desktop groups them.
    QGuiApplication::setDesktopFileName(QStringLiteral("io.github.curvix.Curvix"));

    QStringList args;
    for (int i = 1; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    QTextStream out(stdout);
    QTextStream err(stderr);
    // The arguments are checked before anything needs a display.
    const app::CommandLineReading reading = app::readCommandLine(args);
    if (!reading.commandLine)
        return app::reportUsageError(err, reading.problem);
    const app::CommandLine& line = *reading.commandLine;
    if (line.command != app::CliCommand::Window)
        return app::runHeadless(line, out, err);
    if (const std::optional<QString> problem = app::windowStartProblem(line)) {
        err << "curvix: " << *problem << "\n";
        return 1;
    }

    // Qt's own options are not ours: the arguments were read above.
    int qtArgc = 1;
    previousHandler = qInstallMessageHandler(platformStartHandler);
    QApplication application(qtArgc, argv);
    qInstallMessageHandler(previousHandler);
    QApplication::setOrganizationName(QStringLiteral("Curvix"));
    QApplication::setApplicationName(QStringLiteral("Curvix"));
    QApplication::setApplicationDisplayName(QStringLiteral("Curvix"));
    QApplication::setApplicationVersion(QStringLiteral(CURVIX_VERSION));
    app::installTranslations(application);

    app::WidgetPrompter prompter;
    app::frmgraph window(prompter);
    prompter.setParentWidget(&window);
    FirstFrameWatch firstFrame;
    if (line.quitAfterFirstFrame)
        window.plotArea()->installEventFilter(&firstFrame);
    window.show();
    // After the first frame: a drawing left by a crash is offered, then the file is opened.
    const QString drawingFile = line.drawingFile;
    QTimer::singleShot(0, &window, [&window, drawingFile] {
        window.document().offerRecovery();
        if (!drawingFile.isEmpty())
            window.document().openFile(drawingFile);
    });
    return QApplication::exec();
}
