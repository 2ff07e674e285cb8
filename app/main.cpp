#include "app/cli.h"
#include "app/frmgraph.h"
#include "app/widget_prompter.h"

#include <QApplication>
#include <QCoreApplication>

#include <cstdio>

using namespace curvix;

int main(int argc, char* argv[])
{
    QStringList rawArgs;
    for (int i = 1; i < argc; ++i)
        rawArgs << QString::fromLocal8Bit(argv[i]);

    // Headless commands need no display.
    if (app::isHeadlessCommand(rawArgs)) {
        QCoreApplication core(argc, argv);
        QTextStream out(stdout);
        QTextStream err(stderr);
        return app::runCommandLine(core.arguments().mid(1), out, err);
    }

    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Curvix"));
    QApplication::setApplicationName(QStringLiteral("Curvix"));
    QApplication::setApplicationDisplayName(QStringLiteral("Curvix"));
    QApplication::setApplicationVersion(QStringLiteral(CURVIX_VERSION));

    // Whatever Qt did not take from the arguments is not ours either.
    if (application.arguments().size() > 1) {
        QTextStream err(stderr);
        err << "curvix: unexpected argument '" << application.arguments().at(1) << "'\n"
            << app::usageText();
        return 2;
    }

    app::WidgetPrompter prompter;
    app::frmgraph window(prompter);
    prompter.setParentWidget(&window);
    window.show();
    return QApplication::exec();
}
