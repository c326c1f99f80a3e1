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
    , paceTimer_(new QTimer(this)) {
    paceTimer_->setTimerType(Qt::PreciseTimer);
    paceTimer_->setInterval(1);
    connect(paceTimer_, &QTimer::timeout, this, &PtyLine::writePaced);
}

PtyLine::~PtyLine() {
    releaseDescriptors();
}

bool PtyLine::open(QString& error) {
    master_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    char name[128] = {};
    if (master_ < 0 || ::grantpt(master_) != 0 || ::unlockpt(master_) != 0 ||
        ::ptsname_r(master_, name, sizeof name) != 0) {
        error = systemError("pseudo-terminal");
        releaseDescriptors();
        return false;
    }
    path_ = QString::fromLocal8Bit(name);
    slave_ = ::open(name, O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (slave_ < 0 || !makeRaw(slave_)) {
        error = systemError("slave side of the pseudo-terminal");
        releaseDescriptors();
        return false;
    }
    readNotifier_ = new QSocketNotifier(master_, QSocketNotifier::Read, this);
    connect(readNotifier_, &QSocketNotifier::activated, this, &PtyLine::readAvailable);
    writeNotifier_ = new QSocketNotifier(master_, QSocketNotifier::Write, this);
    writeNotifier_->setEnabled(false);
    connect(writeNotifier_, &QSocketNotifier::activated, this, &PtyLine::writePending);
    return true;
}

void PtyLine::readAvailable() {
    Bytes bytes;
    std::uint8_t buffer[4096];
    for (;;) {
        const ssize_t n = ::read(master_, buffer, sizeof buffer);
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
    if (!isOpen() || bytes.empty()) return;
    dropUnreadStaleBytes();
    pending_.insert(pending_.end(), bytes.begin(), bytes.end());
    if (!paced_) {
        writePending();
        return;
    }
    if (!paceTimer_->isActive()) {
        paceClock_.start();
        pacedBytes_ = 0;
        paceTimer_->start();
        writePaced();
    }
}

void PtyLine::writePending() {
    writeNotifier_->setEnabled(!writeSome(pending_.size()));
}

void PtyLine::writePaced() {
    const std::int64_t due = paceClock_.nsecsElapsed() / kNanosecondsPerByte + 1 - pacedBytes_;
    const std::size_t before = pending_.size();
    if (due > 0) writeSome(std::min(pending_.size(), static_cast<std::size_t>(due)));
    pacedBytes_ += static_cast<std::int64_t>(before - pending_.size());
    if (pending_.empty()) paceTimer_->stop();
}

bool PtyLine::writeSome(std::size_t count) {
    while (count > 0 && isOpen()) {
        const ssize_t n = ::write(master_, pending_.data(), count);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        pending_.erase(pending_.begin(), pending_.begin() + n);
        count -= static_cast<std::size_t>(n);
        sinceLastWrite_.start();
    }
    return true;
}

// Bytes that lie unread in the port for a long time were sent while the tool had the port
// closed; a real line would have lost them.
void PtyLine::dropUnreadStaleBytes() {
    int unread = 0;
    if (!sinceLastWrite_.isValid() || sinceLastWrite_.elapsed() < kStaleAfterMs ||
        ::ioctl(slave_, FIONREAD, &unread) != 0 || unread == 0)
        return;
    ::tcflush(slave_, TCIFLUSH);
}

void PtyLine::close() {
    if (!isOpen()) return;
    releaseDescriptors();
    emit closed();
}

void PtyLine::releaseDescriptors() {
    delete readNotifier_;
    readNotifier_ = nullptr;
    delete writeNotifier_;
    writeNotifier_ = nullptr;
    paceTimer_->stop();
    pending_.clear();
    for (int* fd : {&master_, &slave_}) {
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
    target_ = target;
    link_ = linkPath;
    return true;
}

void PortLink::remove() {
    if (!link_.isEmpty() && QFileInfo(link_).symLinkTarget() == target_) QFile::remove(link_);
    link_.clear();
}

} // namespace mq27sim
