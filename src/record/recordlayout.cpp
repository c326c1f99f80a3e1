#include "record/recordlayout.h"

#include "common/services.h"

#include <QStringList>

namespace record {

namespace {

void refuse(UserDialogs* dialogs, const QString& text) {
    if (dialogs)
        dialogs->messageBox(text, QString(), UserDialogs::Buttons::Ok, UserDialogs::Icon::None,
                            UserDialogs::Answer::Ok);
}

bool isDirectionMark(char32_t c) {
    return c == 0x200E || c == 0x200F || c == 0x061C || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0x2066 && c <= 0x2069);
}

// A surrogate pair stands for one character.
bool startsPair(const QString& text, qsizetype at) {
    return text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
}

} // namespace

int LengthOf(const QString& text) {
    int length = 0;
    for (qsizetype at = 0; at < text.size(); at += startsPair(text, at) ? 2 : 1)
        ++length;
    return length;
}

QString FormatColumn(UserDialogs* dialogs, const QString& Text, std::int16_t Width,
                     std::int16_t Align, const QString& FillChar) {
    if (FillChar.size() != 1) {
        refuse(dialogs, QStringLiteral("Anzahl Füllzeichen ungleich 1"));
        return {};
    }
    if (LeftMargin.size() >= PageWidth) {
        refuse(dialogs, QStringLiteral("Seitenbreite ist kleiner/gleich dem linken Seitenrand"));
        return {};
    }
    if (Width > PageWidth - LeftMargin.size()) {
        refuse(dialogs, QStringLiteral("Spaltenbreite überschreitet Druckbereich"));
        return {};
    }
    if (Width < 0) return {};
    qsizetype end = 0;
    int taken = 0;
    while (end < Text.size() && taken < Width) {
        end += startsPair(Text, end) ? 2 : 1;
        ++taken;
    }
    const QString cut = Text.left(end);
    const qsizetype shortfall = Width - taken;
    if (Align == 1) return cut + QString(shortfall, FillChar[0]);
    if (Align == 2) return QString(shortfall, FillChar[0]) + cut;
    return cut;
}

QString PrintableLine(const QString& text) {
    QString line;
    line.reserve(text.size());
    for (const char32_t c : text.toUcs4()) {
        if (isDirectionMark(c)) continue;
        if (c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029) {
            line += u' ';
            continue;
        }
        line += QString::fromUcs4(&c, 1);
    }
    return line;
}

void PageGrid::add(std::initializer_list<QString> cells) {
    addCells(QStringList(cells));
}

void PageGrid::addCells(const QStringList& cells) {
    if (m_line < 0 || m_line >= LinesPerPage) {
        ++m_line;
        return;
    }
    auto& row = m_cells[static_cast<std::size_t>(m_line)];
    for (qsizetype i = 0; i < cells.size() && i < static_cast<qsizetype>(row.size()); ++i)
        row[static_cast<std::size_t>(i)] = cells[i];
    ++m_line;
}

QString PageGrid::text() const {
    QString page;
    page.reserve(LinesPerPage * (PageWidth + 2));
    for (const auto& row : m_cells) {
        page += LeftMargin;
        for (const QString& cell : row)
            page += cell;
        page += LineEnd;
    }
    return page;
}

} // namespace record
