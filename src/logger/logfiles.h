#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>

// The logger's files: a table for a spreadsheet (.log: tab, the locale's decimal mark,
// date first), one for a mathematics tool (.dat: blanks, a decimal point, year first), and
// beside each an info file that names the columns of every recording. Each line is
// appended on its own, so that another program may read the files while they grow.
namespace logfiles {

inline const QString kLogInfoSuffix = QStringLiteral("_log_Info.txt");
inline const QString kDatInfoSuffix = QStringLiteral("_dat_Info.txt");

// "16.11.2026\t14:05:09"
QString ExcelStamp(const QDateTime& time);
// "2026 11 16 14 05 09"
QString MathCadStamp(const QDateTime& time);

// A value's text for the .dat file: a number's first comma becomes a point, and only that
// one; any other text stays as it is.
QString WithDecimalPoint(const QString& text, const QLocale& locale);

// The info file of `path`: everything before the first "." of the whole path, and the
// suffix. A point in a folder's name cuts the path there; readers of earlier recordings
// look for the info file at that place, so it stays.
QString InfoPath(const QString& path, const QString& suffix);

// Appends `line` and CR LF to the file, creating it where it is missing, in one write that
// is checked; a line that could not be written whole is taken out again. Empty when
// written, else the reason in the platform's words.
QString AppendLine(const QString& path, const QString& line);

// Lines the file holds; 0 when it is missing or cannot be read.
qint64 CountLines(const QString& path);

} // namespace logfiles
