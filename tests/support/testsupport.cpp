#include "support/testsupport.h"

#include <QProcess>

#include "link/telegram.h"

#include <QDir>

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

ProgramRun runProgram(const QString& name, const QStringList& arguments) {
    QProcess process;
    process.start(programPath(name), arguments);
    process.waitForFinished(30000);
    ProgramRun run;
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.out = QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

QRandomGenerator seededGenerator() {
    bool ok = false;
    quint32 seed = qEnvironmentVariable("MQ27_TEST_SEED").toUInt(&ok);
    if (!ok) seed = 20270611u;
    qInfo("random seed %u (set MQ27_TEST_SEED to repeat)", seed);
    return QRandomGenerator(seed);
}

} // namespace testsupport
