#include "common/ui/desktoplauncher.h"

#include <QDesktopServices>
#include <QUrl>

bool DesktopLauncher::openFolder(const QString& path) {
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

bool DesktopLauncher::openDocument(const QString& path) {
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}
