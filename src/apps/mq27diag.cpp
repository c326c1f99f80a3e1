// mq27diag: the desktop diagnosis tool.
#include "shell/terminationsignals.h"
#include "shell/ui/screenshots.h"
#include "shell/ui/toolruntime.h"

#include <cstdio>
#include <cstring>

#include <QApplication>
#include <QStringList>

namespace {

const char* const kUsage =
    "Usage: mq27diag [FILE.ko3 | /LOGGER]\n"
    "\n"
    "The diagnosis tool of the MQ27D aspirating smoke detector. It finds the device on a\n"
    "serial port, reads it out and polls its status. With a saved read-out it shows that\n"
    "offline; /LOGGER opens the data logger. A path with a blank is not taken as a file:\n"
    "open such a file through File > Load.\n"
    "\n"
    "  --help      this text\n"
    "  --version   the version\n"
    "\n"
    "Environment: MQ27D_PORTn=PATH makes port number n (1 to 16) that device path.\n"
    "See mq27diag(1).\n";

// Answered before any window system is asked for, so that they work without a display.
bool answeredInformationOption(int argc, char* argv[]) {
    if (argc != 2) return false;
    if (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0) {
        std::fputs(kUsage, stdout);
        return true;
    }
    if (std::strcmp(argv[1], "--version") == 0) {
        std::printf("mq27diag %s\n", MQ27_VERSION_TEXT);
        return true;
    }
    return false;
}

} // namespace

int main(int argc, char* argv[]) {
    if (answeredInformationOption(argc, argv)) return 0;
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("mq27diag"));
    QApplication::setOrganizationName(QStringLiteral("Halvorn"));
    // Lets the desktop match the windows to the menu entry and its icon.
    QGuiApplication::setDesktopFileName(QStringLiteral("org.mq27diag.mq27diag"));

    // The tool splits its command line itself, as one text.
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);

    ToolRuntime runtime;
    TerminationSignals termination;
    QObject::connect(&termination, &TerminationSignals::terminationRequested, &runtime,
                     &ToolRuntime::terminate);
    const auto screenshots = ScreenshotRun::fromEnvironment(runtime);
    runtime.start(arguments.join(QLatin1Char(' ')));
    return QApplication::exec();
}
