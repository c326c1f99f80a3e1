#include "logger/logfiles.h"

#include <QFile>

namespace logfiles {
namespace {

QString twoDigits(int value) {
    return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0'));
}

} // namespace

QString ExcelStamp(const QDateTime& time) {
    const QDate d = time.date();
    const QTime t = time.time();
    return twoDigits(d.day()) + u'.' + twoDigits(d.month()) + u'.' + twoDigits(d.year() / 100) +
           twoDigits(d.year() % 100) + u'\t' + twoDigits(t.hour()) + u':' + twoDigits(t.minute()) +
           u':' + twoDigits(t.second());
}

QString MathCadStamp(const QDateTime& time) {
    const QDate d = time.date();
    const QTime t = time.time();
    return twoDigits(d.year() / 100) + twoDigits(d.year() % 100) + u' ' + twoDigits(d.month()) +
           u' ' + twoDigits(d.day()) + u' ' + twoDigits(t.hour()) + u' ' + twoDigits(t.minute()) +
           u' ' + twoDigits(t.second());
}

QString WithDecimalPoint(const QString& text, const QLocale& locale) {
    const qsizetype comma = text.indexOf(u',');
    if (comma < 0) return text;
    bool numeric = false;
    locale.toDouble(text, &numeric);
    if (!numeric) QLocale::c().toDouble(text, &numeric);
    if (!numeric) return text;
    QString out = text;
    out[comma] = u'.';
    return out;
}

QString InfoPath(const QString& path, const QString& suffix) {
    const qsizetype point = path.indexOf(u'.');
    return (point >= 0 ? path.left(point) : path) + suffix;
}

QString AppendLine(const QString& path, const QString& line) {
    const QByteArray bytes = (line + QStringLiteral("\r\n")).toLocal8Bit();
    QFile file(path);
    // Unbuffered: the line goes out in the write below, not in a later flush whose failure
    // would leave part of it behind unnoticed.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered))
        return file.errorString();
    const qint64 before = file.size();
    if (file.write(bytes) == bytes.size()) return {};
    QString reason = file.errorString();
    file.resize(before);
    return reason.isEmpty() ? QStringLiteral("write failed") : reason;
}

qint64 CountLines(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return 0;
    qint64 lines = 0;
    while (!file.atEnd()) {
        const QByteArray chunk = file.read(1 << 16);
        if (chunk.isEmpty()) break;
        lines += chunk.count('\n');
    }
    return lines;
}

} // namespace logfiles
