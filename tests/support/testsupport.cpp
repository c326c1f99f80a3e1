#include "support/testsupport.h"

#include <QFile>
#include <QProcess>
#include <QTest>

#include "link/telegram.h"

#include <QDir>

#include <cerrno>
#include <cstring>

#include <grp.h>
#include <pwd.h>
#include <unistd.h>

namespace testsupport {

Bytes deviceFrame(int command, std::uint32_t serial, std::uint8_t fill, int extraBytes) {
    static constexpr int kStoredSize[] = {0, 19, 202, 211, 54, 421};
    const int header = command == 5 ? 4 : 2;
    const int size = command >= 1 && command <= 5 ? kStoredSize[command] : 19;
    Bytes data{10,
               static_cast<std::uint8_t>(command),
               static_cast<std::uint8_t>(serial >> 24),
               static_cast<std::uint8_t>(serial >> 16),
               static_cast<std::uint8_t>(serial >> 8),
               static_cast<std::uint8_t>(serial)};
    // Besides the data the stored telegram holds its header, the CRC, stamp and sum.
    data.resize(static_cast<std::size_t>(size - header - 2 - 9 + extraBytes), fill);
    return telegram::MakeSendFrame(data, true).value();
}

Bytes frameOf(const Bytes& data) {
    return telegram::MakeSendFrame(data, true).value();
}

Bytes concat(std::initializer_list<Bytes> parts) {
    Bytes out;
    for (const Bytes& p : parts)
        out.insert(out.end(), p.begin(), p.end());
    return out;
}

Bytes ownTelegram(int command, std::uint32_t serial, std::uint8_t fill, const QDateTime& when,
                  int extraBytes) {
    return telegram::StampTelegram(deviceFrame(command, serial, fill, extraBytes), when).value();
}

QString sourcePath(const QString& relative) {
    return QDir(QStringLiteral(MQ27_SOURCE_DIR)).filePath(relative);
}

QString programPath(const QString& name) {
    const QByteArray env = qgetenv("MQ27_BIN_DIR");
    const QString dir = env.isEmpty() ? QStringLiteral(MQ27_BIN_DIR) : QString::fromLocal8Bit(env);
    return QDir(dir).filePath(name);
}

ProgramRun runProgram(const QString& name, const QStringList& arguments,
                      const QString& workingDirectory) {
    QProcess process;
    if (!workingDirectory.isEmpty()) process.setWorkingDirectory(workingDirectory);
    process.start(programPath(name), arguments);
    ProgramRun run;
    if (!process.waitForFinished(30000)) {
        process.kill();
        process.waitForFinished(5000);
        QTest::qFail(qPrintable(QStringLiteral("hung or did not start: ") + name + u' ' +
                                arguments.join(u' ')),
                     __FILE__, __LINE__);
        return run;
    }
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.out = QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

AsNobody::AsNobody() {
    if (::geteuid() != 0) return;
    const passwd* nobody = ::getpwnam("nobody");
    if (!nobody) qFatal("the tests run as root and need the user nobody");
    // Groups first, while the process may still change them; the saved ids stay root's, so
    // that the destructor can take them back.
    if (::setgroups(0, nullptr) != 0 || ::setresgid(nobody->pw_gid, nobody->pw_gid, 0) != 0 ||
        ::setresuid(nobody->pw_uid, nobody->pw_uid, 0) != 0)
        qFatal("cannot become nobody: %s", std::strerror(errno));
    m_dropped = true;
}

AsNobody::~AsNobody() {
    if (!m_dropped) return;
    const gid_t root = 0;
    if (::setresuid(0, 0, 0) != 0 || ::setresgid(0, 0, 0) != 0 || ::setgroups(1, &root) != 0)
        qFatal("cannot become root again: %s", std::strerror(errno));
}

void openToOthers(const QString& folder) {
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                      QFile::ReadOther | QFile::WriteOther | QFile::ExeOther |
                                      QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup);
}

QRandomGenerator seededGenerator() {
    bool ok = false;
    quint32 seed = qEnvironmentVariable("MQ27_TEST_SEED").toUInt(&ok);
    if (!ok) seed = 20270611u;
    qInfo("random seed %u (set MQ27_TEST_SEED to repeat)", seed);
    return QRandomGenerator(seed);
}

} // namespace testsupport
