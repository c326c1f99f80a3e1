// readout --port N|PATH [-o FILE.ko3] [--timeout S]: the device's first complete read-out,
// saved as the automatic save saves it.

#include "apps/cli/cli.h"
#include "display/mainview_elements.h"
#include "shell/program.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace cli {

int readout(const QStringList& args) {
    const auto parsed = parse(
        args, {QStringLiteral("--port"), QStringLiteral("-o"), QStringLiteral("--timeout")}, {});
    if (!parsed) return kBadInput;
    const auto seconds = timeoutSeconds(*parsed, 10);
    if (!seconds) return kBadInput;
    if (!parsed->has(QStringLiteral("--port")) || !parsed->positional.isEmpty()) {
        complain(QStringLiteral("readout takes --port N|PATH and at most -o FILE"));
        return kBadInput;
    }
    catchStopSignals();
    LiveSession session({});
    if (const auto failed = connect(session, parsed->value(QStringLiteral("--port")), *seconds))
        return *failed;

    // The automatic save has written the read-out under its own name; that file is the
    // result, copied byte for byte.
    const QString saved = session.autoSavedFile();
    if (saved.isEmpty()) {
        complain(QStringLiteral("the read-out could not be saved"));
        return kLineFault;
    }
    const QString target =
        parsed->value(QStringLiteral("-o"), QDir::current().filePath(QFileInfo(saved).fileName()));
    if (QFileInfo::exists(target)) QFile::remove(target);
    if (!QFile::copy(saved, target)) {
        complain(target + QStringLiteral(": cannot be written"));
        return kLineFault;
    }
    const QString serial =
        session.program().forms().frmDisplay().caption(frmDisplay::lblSerialNo[0]);
    printLine(stdout, serial + QLatin1Char('\t') + QDir::toNativeSeparators(target));
    return kDone;
}

} // namespace cli
