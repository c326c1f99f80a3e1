#pragma once

#include <QFont>
#include <QString>
#include <QStringList>

class QPainter;
class QPagedPaintDevice;
class QRectF;

// Record pages on paper: each page's 84 printed columns and 80 lines scaled to fill the
// printable area of the sheet (A4 or Letter) in the system's fixed-pitch font; the blank
// margin of the text is left to the sheet's own margin.
namespace recordprint {

// The system's fixed-pitch font, which lines the record's columns up.
QFont recordFont();

// One page of record text into `area` of the painter's device.
void paintPage(QPainter& painter, const QRectF& area, const QString& pageText);

// Every page on `device`, each on a sheet of its own; false when the device cannot be drawn on.
bool paintPages(QPagedPaintDevice& device, const QStringList& pages);

// All pages as one PDF document; empty on failure.
QByteArray pdf(const QStringList& pages, const QString& title);

// The PDF written to `path` whole or not at all: empty when written, else the reason.
QString writePdf(const QString& path, const QStringList& pages, const QString& title);

} // namespace recordprint
