// mq27sim: the virtual device on a pseudo-terminal. All logic lives in mq27simlib.
#include "sim/device_profile.h"
#include "sim/pty_line.h"
#include "sim/sim_options.h"
#include "sim/simulator.h"

#include <csignal>
#include <cstdio>

#include <sys/socket.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSocketNotifier>

using namespace mq27sim;

namespace {

int signalPipe[2] = {-1, -1};

void onSignal(int) {
    const char byte = 1;
    [[maybe_unused]] const auto written = ::write(signalPipe[0], &byte, 1);
}

// SIGINT and SIGTERM end the event loop, so that the link is removed on the way out.
void quitOnSignals(QCoreApplication& app) {
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, signalPipe) != 0) return;
    auto* notifier = new QSocketNotifier(signalPipe[1], QSocketNotifier::Read, &app);
    QObject::connect(notifier, &QSocketNotifier::activated, &app, &QCoreApplication::quit);
    std::signal(SIGINT, onSignal);
    std::signal(SIGTERM, onSignal);
}

// A profile by path, or by the name of one that came with the program: installed beside it
// under share/, or in the source tree it was built from.
QString profilePath(const QString& given) {
    if (QFileInfo::exists(given) || given.contains(QLatin1Char('/'))) return given;
    const QString file = given.endsWith(QLatin1String(".json")) ? given : given + ".json";
    const QDir programDir(QCoreApplication::applicationDirPath());
    for (const QString& folder : {programDir.filePath(QStringLiteral("../share/mq27diag/profiles")),
                                  QStringLiteral(MQ27_SOURCE_PROFILES)}) {
        const QString candidate = QDir(folder).filePath(file);
        if (QFileInfo::exists(candidate)) return QDir::cleanPath(candidate);
    }
    return given;
}

int fail(const QString& message, int status) {
    std::fprintf(stderr, "mq27sim: %s\n", qPrintable(message));
    return status;
}

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(MQ27_VERSION_TEXT));
    SimOptions options;
    QString message;
    switch (parseCommandLine(app.arguments(), options, message)) {
    case CommandLine::Help:
        std::printf("%s", qPrintable(message));
        return 0;
    case CommandLine::Version:
        std::printf("mq27sim %s\n", MQ27_VERSION_TEXT);
        return 0;
    case CommandLine::Error:
        return fail(message, 2);
    case CommandLine::Run:
        break;
    }
    std::vector<DeviceProfile> profiles;
    if (options.profiles.empty()) profiles.push_back(ProfileLoader::defaults());
    for (const QString& path : options.profiles) {
        auto profile = ProfileLoader::load(profilePath(path), message);
        if (!profile) return fail(message, 2);
        profiles.push_back(std::move(*profile));
    }
    message = ProfileLoader::conflicts(profiles);
    if (!message.isEmpty()) return fail(message, 2);

    Simulator simulator(std::move(profiles), options);
    if (!simulator.start(message)) return fail(message, 1);
    PortLink link;
    if (!options.linkPath.isEmpty() &&
        !link.create(simulator.portPath(), options.linkPath, message))
        return fail(message, 1);
    std::printf("%s\n", qPrintable(simulator.portPath()));
    std::fflush(stdout);
    quitOnSignals(app);
    QObject::connect(&simulator, &Simulator::lineClosed, &app, &QCoreApplication::quit);
    return app.exec();
}
