#include "support/simprocess.h"

#include "support/testsupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

SimProcess::SimProcess() = default;

SimProcess::~SimProcess() {
    stop();
}

bool SimProcess::start(const QStringList& options) {
    QStringList arguments = options;
    arguments << QStringLiteral("--link") << portPath() << QStringLiteral("--log")
              << QDir(folder()).filePath(QStringLiteral("sim.log"));
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(testsupport::programPath(QStringLiteral("mq27sim")), arguments);
    if (!m_process.waitForStarted(5000)) return false;
    const bool up =
        QTest::qWaitFor([this] { return QFileInfo::exists(portPath()) || !isRunning(); }, 10000);
    m_output += QString::fromLocal8Bit(m_process.readAll());
    return up && isRunning();
}

void SimProcess::stop() {
    if (!isRunning()) return;
    m_process.terminate();
    if (!m_process.waitForFinished(5000)) {
        m_process.kill();
        m_process.waitForFinished(5000);
    }
    m_output += QString::fromLocal8Bit(m_process.readAll());
}

QString SimProcess::portPath() const {
    return QDir(folder()).filePath(QStringLiteral("port"));
}

QString SimProcess::profile(const QString& name) {
    return testsupport::sourcePath(QStringLiteral("tools/profiles/%1.json").arg(name));
}

QList<SimProcess::Entry> SimProcess::log() const {
    QList<Entry> entries;
    QFile file(QDir(folder()).filePath(QStringLiteral("sim.log")));
    if (!file.open(QIODevice::ReadOnly)) return entries;
    while (!file.atEnd()) {
        const QJsonObject o = QJsonDocument::fromJson(file.readLine()).object();
        if (o.isEmpty()) continue; // a line still being written
        Entry e;
        e.t = o.value("t").toDouble();
        e.dir = o.value("dir").toString();
        e.hex = o.value("hex").toString();
        e.kind = o.value("kind").toInt(-1);
        e.cmd = o.value("cmd").toInt(-1);
        e.serial = o.value("serial").toDouble(-1);
        entries << e;
    }
    return entries;
}

QList<SimProcess::Entry> SimProcess::requests() const {
    QList<Entry> out;
    for (const Entry& e : log()) {
        if (e.isRequest()) out << e;
    }
    return out;
}

QList<QByteArray> SimProcess::writes(int command, qsizetype from) const {
    const QList<Entry> entries = log();
    QList<QByteArray> frames;
    for (qsizetype i = from; i < entries.size(); ++i)
        if (entries[i].isRequest() && (command < 0 || entries[i].cmd == command))
            frames << QByteArray::fromHex(entries[i].hex.toLatin1());
    return frames;
}
