// mq27diag: the desktop diagnosis tool.
#include "shell/ui/screenshots.h"
#include "shell/ui/toolruntime.h"

#include <QApplication>
#include <QStringList>

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("mq27diag"));
    QApplication::setOrganizationName(QStringLiteral("Halvorn"));

    // The tool splits its command line itself, as one text.
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);

    ToolRuntime runtime;
    const auto screenshots = ScreenshotRun::fromEnvironment(runtime);
    runtime.start(arguments.join(QLatin1Char(' ')));
    return QApplication::exec();
}
