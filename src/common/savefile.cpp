#include "common/savefile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace {

// A device or pipe named as the target (/dev/full, a FIFO) is written into, never renamed
// over: replacing the node would take the device away from everyone else.
// Opened without blocking, so that a pipe nobody reads fails at once instead of hanging.
QString writeIntoDevice(const QString& path, const QByteArray& content) {
    const int fd = ::open(QFile::encodeName(path).constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) return qt_error_string(errno);
    QString reason;
    qsizetype done = 0;
    while (done < content.size()) {
        const ssize_t n =
            ::write(fd, content.constData() + done, static_cast<size_t>(content.size() - done));
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) {
            reason = qt_error_string(n < 0 ? errno : ENOSPC);
            break;
        }
        done += n;
    }
    ::close(fd);
    return reason;
}

} // namespace

QString writeWholeFile(const QString& path, const QByteArray& content) {
    const QFileInfo target(path);
    if (target.exists() && !target.isFile() && !target.isDir())
        return writeIntoDevice(path, content);
    QSaveFile file(path);
    // Without this, a folder the user may not create files in would be written in place.
    file.setDirectWriteFallback(false);
    if (!file.open(QIODevice::WriteOnly)) return file.errorString();
    if (file.write(content) != content.size()) {
        const QString reason = file.errorString();
        file.cancelWriting();
        return reason;
    }
    // commit() flushes, syncs and renames: a full disk often shows only here.
    if (!file.commit()) return file.errorString();
    return {};
}
