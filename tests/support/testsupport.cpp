#include "support/testsupport.h"

#include <QDir>

namespace testsupport {

QString sourcePath(const QString& relative) {
    return QDir(QStringLiteral(MQ27_SOURCE_DIR)).filePath(relative);
}

QString programPath(const QString& name) {
    const QByteArray env = qgetenv("MQ27_BIN_DIR");
    const QString dir = env.isEmpty() ? QStringLiteral(MQ27_BIN_DIR) : QString::fromLocal8Bit(env);
    return QDir(dir).filePath(name);
}

} // namespace testsupport
