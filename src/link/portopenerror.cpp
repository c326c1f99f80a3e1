#include "link/portopenerror.h"

#include "common/stringtable.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>

#include <cerrno>
#include <grp.h>
#include <pwd.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int kStringNoDevice = 600;
constexpr int kStringNoPortDevice = 601;
constexpr int kStringPermission = 602;
constexpr int kStringBusy = 603;
constexpr int kStringBusyHolder = 604;
constexpr int kStringOther = 605;
constexpr int kStringVanished = 606;

// The folders where serial ports leave their lock files, in the order QSerialPort tries them.
const char* const kLockFolders[] = {"/var/lock",         "/etc/locks", "/var/spool/locks",
                                    "/var/spool/uucp",   "/tmp",       "/var/tmp",
                                    "/var/lock/lockdev", "/run/lock"};

QString processName(qint64 pid) {
    QFile comm(QStringLiteral("/proc/%1/comm").arg(pid));
    if (!comm.open(QIODevice::ReadOnly)) return {};
    return QString::fromLocal8Bit(comm.read(256)).trimmed();
}

QString describeHolder(qint64 pid, const QString& fallbackName) {
    QString name = processName(pid);
    if (name.isEmpty()) name = fallbackName;
    if (name.isEmpty()) return QStringLiteral("%1").arg(pid);
    return QStringLiteral("%1 (%2)").arg(name).arg(pid);
}

// A live holder of the serial lock file that QSerialPort and other serial programs write.
QString lockFileHolder(const QString& device) {
    QString name = device;
    if (name.startsWith(QLatin1String("/dev/"))) name = name.mid(5);
    name.replace(QLatin1Char('/'), QLatin1Char('_'));
    for (const char* folder : kLockFolders) {
        const QString path = QString::fromLatin1(folder) + QStringLiteral("/LCK..") + name;
        if (!QFileInfo::exists(path)) continue;
        QLockFile lock(path);
        qint64 pid = 0;
        QString host;
        QString app;
        if (!lock.getLockInfo(&pid, &host, &app) || pid <= 0) continue;
        if (::kill(static_cast<pid_t>(pid), 0) != 0 && errno == ESRCH) continue;
        return describeHolder(pid, app);
    }
    return {};
}

// A process of ours (or any, for root) with the device open. The kernel tells through the
// links in /proc/<pid>/fd; other users' processes stay unreadable, and then we say nothing.
QString openFileHolder(const QString& device) {
    const QDir proc(QStringLiteral("/proc"));
    const QStringList pids = proc.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    const qint64 self = QCoreApplication::applicationPid();
    for (const QString& entry : pids) {
        bool number = false;
        const qint64 pid = entry.toLongLong(&number);
        if (!number || pid == self) continue;
        const QDir fds(QStringLiteral("/proc/%1/fd").arg(pid));
        const QStringList links = fds.entryList(QDir::Files | QDir::System | QDir::NoDotAndDotDot);
        for (const QString& fd : links) {
            if (QFile::symLinkTarget(fds.filePath(fd)) == device) return describeHolder(pid, {});
        }
    }
    return {};
}

QString ownerGroup(const QString& device) {
    struct stat info {};
    if (::stat(QFile::encodeName(device).constData(), &info) != 0) return {};
    if (const group* entry = ::getgrgid(info.st_gid)) return QString::fromLocal8Bit(entry->gr_name);
    return QString::number(info.st_gid);
}

QString userName() {
    if (const passwd* entry = ::getpwuid(::getuid())) return QString::fromLocal8Bit(entry->pw_name);
    return qEnvironmentVariable("USER");
}

} // namespace

PortOpenFailure diagnosePortOpen(const QString& path, QSerialPort::SerialPortError error,
                                 const QString& systemText) {
    PortOpenFailure failure;
    failure.path = path;
    failure.systemText = systemText;
    if (path.isEmpty()) {
        failure.kind = PortOpenFailure::Kind::NoDevice;
        return failure;
    }
    const QString device = QFileInfo(path).canonicalFilePath();
    if (device.isEmpty() || error == QSerialPort::DeviceNotFoundError) {
        failure.kind = PortOpenFailure::Kind::NoDevice;
        return failure;
    }
    const QByteArray encoded = QFile::encodeName(device);
    if (::access(encoded.constData(), R_OK | W_OK) != 0 && errno == EACCES) {
        failure.kind = PortOpenFailure::Kind::Permission;
        failure.group = ownerGroup(device);
        failure.user = userName();
        return failure;
    }
    if (error == QSerialPort::PermissionError) {
        // Readable and writable for us, yet refused: a lock file or an exclusive open
        // (TIOCEXCL) of another program.
        failure.kind = PortOpenFailure::Kind::Busy;
        failure.holder = lockFileHolder(device);
        if (failure.holder.isEmpty()) failure.holder = openFileHolder(device);
        return failure;
    }
    failure.kind = PortOpenFailure::Kind::Other;
    return failure;
}

QString permissionFixCommand(const QString& group, const QString& user) {
    return QStringLiteral("sudo adduser %1 %2").arg(user, group);
}

QString describePortOpenError(const PortOpenFailure& failure, Language language) {
    const StringTable& table = StringTable::instance();
    auto text = [&](int index) { return table.text(language, index); };
    QString reason;
    switch (failure.kind) {
    case PortOpenFailure::Kind::None:
        return {};
    case PortOpenFailure::Kind::NoDevice:
        reason = failure.path.isEmpty() ? text(kStringNoPortDevice).arg(failure.portNumber)
                                        : text(kStringNoDevice).arg(failure.path);
        break;
    case PortOpenFailure::Kind::Permission:
        reason = text(kStringPermission)
                     .arg(failure.path, failure.group,
                          permissionFixCommand(failure.group, failure.user));
        break;
    case PortOpenFailure::Kind::Busy:
        reason = failure.holder.isEmpty()
                     ? text(kStringBusy).arg(failure.path)
                     : text(kStringBusyHolder).arg(failure.path, failure.holder);
        break;
    case PortOpenFailure::Kind::Other:
        reason = text(kStringOther).arg(failure.path, failure.systemText);
        break;
    }
    if (failure.vanished) reason = text(kStringVanished).arg(reason);
    return reason;
}
