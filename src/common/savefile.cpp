#include "common/savefile.h"

#include <QSaveFile>

QString writeWholeFile(const QString& path, const QByteArray& content) {
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
