#include "app/cli.h"
#include "app/document_actions.h"
#include "app/frmgraph.h"
#include "app/language.h"
#include "app/widget_prompter.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QTimer>

#include <unistd.h>

#include <cstdio>

using namespace curvix;

namespace {

// Without a session the platform plugin warns about a missing runtime folder on every
// run; a headless command makes the same private folder itself, silently.
void quietRuntimeDir()
{
    if (!qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        return;
    const QByteArray dir = QDir::tempPath().toLocal8Bit() + "/runtime-" + QByteArray::number(getuid());
    if (QDir().mkpath(QString::fromLocal8Bit(dir))) {
        QFile::setPermissions(QString::fromLocal8Bit(dir), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("XDG_RUNTIME_DIR", dir);
    }
}

} // namespace

int main(int argc, char* argv[])
{
    QStringList rawArgs;
    for (int i = 1; i < argc; ++i)
        rawArgs << QString::fromLocal8Bit(argv[i]);

    // Headless commands need no display.
    if (app::isHeadlessCommand(rawArgs)) {
        QTextStream out(stdout);
        QTextStream err(stderr);
        if (rawArgs.first() != QLatin1String("--export") &&
            rawArgs.first() != QLatin1String("--write-drawing")) {
            QCoreApplication core(argc, argv);
            return app::runCommandLine(core.arguments().mid(1), out, err);
        }
        // Drawing (and a drawing's font) needs fonts but no display.
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        quietRuntimeDir();
        QGuiApplication gui(argc, argv);
        return app::runCommandLine(gui.arguments().mid(1), out, err);
    }

    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Curvix"));
    QApplication::setApplicationName(QStringLiteral("Curvix"));
    QApplication::setApplicationDisplayName(QStringLiteral("Curvix"));
    QApplication::setApplicationVersion(QStringLiteral(CURVIX_VERSION));
    app::installTranslations(application);

    // Whatever Qt did not take from the arguments is not ours either, but for one drawing
    // file to open (as a file manager starts us).
    const QStringList args = application.arguments().mid(1);
    if (args.size() > 1 || (args.size() == 1 && !app::isDrawingFileName(args.first()))) {
        QTextStream err(stderr);
        err << "curvix: unexpected argument '" << args.value(args.size() > 1 ? 1 : 0) << "'\n"
            << app::usageText();
        return 2;
    }

    app::WidgetPrompter prompter;
    app::frmgraph window(prompter);
    prompter.setParentWidget(&window);
    window.show();
    // After the first frame: a drawing left by a crash is offered, then the file is opened.
    QTimer::singleShot(0, &window, [&window, args] {
        window.document().offerRecovery();
        if (!args.isEmpty())
            window.document().openFile(args.first());
    });
    return QApplication::exec();
}
