#include "sim/pty_line.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QSocketNotifier>
#include <QTimer>

namespace mq27sim {
namespace {

constexpr std::int64_t kNanosecondsPerByte = 520833; // ten bits at 19200 baud
constexpr qint64 kStaleAfterMs = 1000;

QString systemError(const char* what) {
    return QStringLiteral("%1: %2").arg(what, QString::fromLocal8Bit(std::strerror(errno)));
}

bool makeRaw(int fd) {
    termios tio{};
    if (::tcgetattr(fd, &tio) != 0) return false;
    ::cfmakeraw(&tio);
    ::cfsetispeed(&tio, B19200);
    ::cfsetospeed(&tio, B19200);
    return ::tcsetattr(fd, TCSANOW, &tio) == 0;
}

} // namespace

PtyLine::PtyLine(QObject* parent)
    : QObject(parent)
    , m_paceTimer(new QTimer(this)) {
    m_paceTimer->setTimerType(Qt::PreciseTimer);
    m_paceTimer->setInterval(1);
    connect(m_paceTimer, &QTimer::timeout, this, &PtyLine::writePaced);
}

PtyLine::~PtyLine() {
    releaseDescriptors();
}

bool PtyLine::open(QString& error) {
    m_master = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    char name[128] = {};
    if (m_master < 0 || ::grantpt(m_master) != 0 || ::unlockpt(m_master) != 0 ||
        ::ptsname_r(m_master, name, sizeof name) != 0) {
        error = systemError("pseudo-terminal");
        releaseDescriptors();
        return false;
    }
    m_path = QString::fromLocal8Bit(name);
    m_slave = ::open(name, O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (m_slave < 0 || !makeRaw(m_slave)) {
        error = systemError("slave side of the pseudo-terminal");
        releaseDescriptors();
        return false;
    }
    m_readNotifier = new QSocketNotifier(m_master, QSocketNotifier::Read, this);
    connect(m_readNotifier, &QSocketNotifier::activated, this, &PtyLine::readAvailable);
    m_writeNotifier = new QSocketNotifier(m_master, QSocketNotifier::Write, this);
    m_writeNotifier->setEnabled(false);
    connect(m_writeNotifier, &QSocketNotifier::activated, this, &PtyLine::writePending);
    return true;
}

void PtyLine::readAvailable() {
    Bytes bytes;
    std::uint8_t buffer[4096];
    for (;;) {
        const ssize_t n = ::read(m_master, buffer, sizeof buffer);
        if (n > 0) {
            bytes.insert(bytes.end(), buffer, buffer + n);
            continue;
        }
        if (n < 0 && errno == EINTR) continue;
        break; // EAGAIN: all read; EIO cannot happen while the slave side is open here
    }
    if (!bytes.empty()) emit received(bytes);
}

void PtyLine::send(const Bytes& bytes) {
    if (!isOpen() || bytes.empty() || !hasRoomFor(bytes.size())) return;
    dropUnreadStaleBytes();
    m_pending.insert(m_pending.end(), bytes.begin(), bytes.end());
    if (!m_paced) {
        writePending();
        return;
    }
    if (!m_paceTimer->isActive()) {
        m_paceClock.start();
        m_pacedBytes = 0;
        m_paceTimer->start();
        writePaced();
    }
}

void PtyLine::writePending() {
    m_writeNotifier->setEnabled(!writeSome(m_pending.size()));
}

void PtyLine::writePaced() {
    const std::int64_t due = m_paceClock.nsecsElapsed() / kNanosecondsPerByte + 1 - m_pacedBytes;
    const std::size_t before = m_pending.size();
    if (due > 0) writeSome(std::min(m_pending.size(), static_cast<std::size_t>(due)));
    m_pacedBytes += static_cast<std::int64_t>(before - m_pending.size());
    if (m_pending.empty()) m_paceTimer->stop();
}

bool PtyLine::writeSome(std::size_t count) {
    while (count > 0 && isOpen()) {
        const ssize_t n = ::write(m_master, m_pending.data(), count);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        m_pending.erase(m_pending.begin(), m_pending.begin() + n);
        count -= static_cast<std::size_t>(n);
        m_sinceLastWrite.start();
    }
    return true;
}

// Bytes that lie unread in the port for a long time were sent while the tool had the port
// closed; a real line would have lost them.
void PtyLine::dropUnreadStaleBytes() {
    int unread = 0;
    if (!m_sinceLastWrite.isValid() || m_sinceLastWrite.elapsed() < kStaleAfterMs ||
        ::ioctl(m_slave, FIONREAD, &unread) != 0 || unread == 0)
        return;
    ::tcflush(m_slave, TCIFLUSH);
}

void PtyLine::close() {
    if (!isOpen()) return;
    releaseDescriptors();
    emit closed();
}

void PtyLine::releaseDescriptors() {
    delete m_readNotifier;
    m_readNotifier = nullptr;
    delete m_writeNotifier;
    m_writeNotifier = nullptr;
    m_paceTimer->stop();
    m_pending.clear();
    for (int* fd : {&m_master, &m_slave}) {
        if (*fd >= 0) ::close(*fd);
        *fd = -1;
    }
}

bool PortLink::create(const QString& target, const QString& linkPath, QString& error) {
    const QFileInfo existing(linkPath);
    if (existing.isSymLink()) {
        QFile::remove(linkPath);
    } else if (existing.exists()) {
        error = QStringLiteral("%1 exists and is no symbolic link").arg(linkPath);
        return false;
    }
    if (!QFile::link(target, linkPath)) {
        error = QStringLiteral("cannot make the link %1").arg(linkPath);
        return false;
    }
    m_target = target;
    m_link = linkPath;
    return true;
}

void PortLink::remove() {
    if (!m_link.isEmpty() && QFileInfo(m_link).symLinkTarget() == m_target) QFile::remove(m_link);
    m_link.clear();
}

} // namespace mq27sim

#include "moc_pty_line.cpp"
