#include "record/ui/recordprint.h"

#include "common/savefile.h"
#include "record/recordlayout.h"

#include <QBuffer>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QLocale>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

namespace recordprint {

namespace {

QStringList printedLines(const QString& pageText) {
    QStringList lines = pageText.split(record::LineEnd);
    if (!lines.isEmpty() && lines.constLast().isEmpty()) lines.removeLast();
    for (QString& line : lines)
        if (line.startsWith(record::LeftMargin)) line.remove(0, record::LeftMargin.size());
    return lines;
}

// The sheet a reader of this locale has in the printer: Letter in North America, else A4.
QPageSize localSheet() {
    return QLocale::system().measurementSystem() == QLocale::ImperialUSSystem
               ? QPageSize(QPageSize::Letter)
               : QPageSize(QPageSize::A4);
}

} // namespace

QFont recordFont() {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    if (QFontInfo(font).fixedPitch()) return font;
    // Some systems name a font for fixed text that does not declare itself fixed (a
    // variable font, say); the record's columns need one that does.
    for (const QString& family : QFontDatabase::families()) {
        if (!QFontDatabase::isFixedPitch(family)) continue;
        font.setFamily(family);
        break;
    }
    return font;
}

void paintPage(QPainter& painter, const QRectF& area, const QString& pageText) {
    QFont font = recordFont();
    font.setPointSizeF(10);
    const QFontMetricsF metrics(font, painter.device());
    const double width = metrics.horizontalAdvance(QString(record::PrintWidth, u'M'));
    const double height = metrics.lineSpacing() * record::LinesPerPage;
    if (width <= 0 || height <= 0) return;
    const double scale = std::min(area.width() / width, area.height() / height);

    painter.save();
    painter.setLayoutDirection(Qt::LeftToRight);
    painter.translate(area.topLeft());
    painter.scale(scale, scale);
    painter.setFont(font);
    painter.setPen(Qt::black);
    const QStringList lines = printedLines(pageText);
    for (qsizetype i = 0; i < lines.size() && i < record::LinesPerPage; ++i)
        painter.drawText(
            QPointF(0, metrics.ascent() + static_cast<double>(i) * metrics.lineSpacing()),
            lines[i]);
    painter.restore();
}

bool paintPages(QPagedPaintDevice& device, const QStringList& pages) {
    QPainter painter;
    if (!painter.begin(&device)) return false;
    for (qsizetype i = 0; i < pages.size(); ++i) {
        if (i > 0 && !device.newPage()) return false;
        const QRect area = device.pageLayout().paintRectPixels(device.logicalDpiX());
        paintPage(painter, QRectF(0, 0, area.width(), area.height()), pages[i]);
    }
    return painter.end();
}

QByteArray pdf(const QStringList& pages, const QString& title) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setResolution(600);
        writer.setTitle(title);
        writer.setCreator(QStringLiteral("mq27diag"));
        writer.setPageLayout(QPageLayout(localSheet(), QPageLayout::Portrait,
                                         QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter));
        if (!paintPages(writer, pages)) return {};
    }
    return buffer.data();
}

QString writePdf(const QString& path, const QStringList& pages, const QString& title) {
    const QByteArray document = pdf(pages, title);
    if (document.isEmpty()) return QStringLiteral("PDF");
    return writeWholeFile(path, document);
}

} // namespace recordprint
