#include "common/savefile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace {

// A device or a pipe is written as it stands: a saved file would be renamed over it and
// take its place, a device node included.
QString writeInPlace(const QString& path, const QByteArray& content) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return file.errorString();
    if (file.write(content) != content.size() || !file.flush()) return file.errorString();
    file.close();
    return file.error() == QFileDevice::NoError ? QString() : file.errorString();
}

} // namespace

QString writeWholeFile(const QString& path, const QByteArray& content) {
    const QFileInfo target(path);
    if (target.exists() && !target.isFile() && !target.isDir()) return writeInPlace(path, content);
    QSaveFile file(path);
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
