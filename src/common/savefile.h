#pragma once

#include <QByteArray>
#include <QString>

// Writes a whole file so that it is either there complete or left as it was: a crash, a
// full disk or a pulled stick leaves the earlier file (or none), never half of a new one.
// A device such as /dev/full is written in place, never replaced. Returns empty when
// written, else the reason in the platform's words.
QString writeWholeFile(const QString& path, const QByteArray& content);
