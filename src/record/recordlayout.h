#pragma once

#include <array>
#include <cstdint>

#include <QString>

class UserDialogs;

// The record's pages are fixed-column plain text: 80 lines of 91 characters, the first 7 a
// blank margin, each line ended by CR LF, so that any printer or editor lines it up in a
// fixed-pitch font.
namespace record {

inline constexpr int PageWidth = 91;
inline const QString LeftMargin = QStringLiteral("       ");
inline constexpr int PrintWidth = 84; // PageWidth less the margin
inline constexpr int LinesPerPage = 80;
inline constexpr int ColumnsPerLine = 11; // margin, nine cells, line end
inline const QString LineEnd = QStringLiteral("\r\n");

// One cell: the first `Width` characters of `Text`, then with `Align` 1 filled up on the
// right with `FillChar`, with `Align` 2 on the left, with any other value not at all. A
// width beyond the print width or a fill of other than one character is refused with a
// message box (when `dialogs` is given) and gives the empty text. Characters are counted as
// code points, so that a cut never halves one.
QString FormatColumn(UserDialogs* dialogs, const QString& Text, std::int16_t Width,
                     std::int16_t Align, const QString& FillChar);

// Code points of `text`: what the record counts as its length.
int LengthOf(const QString& text);

// A comment line as the record can print it: control characters (tabs, line ends) become
// blanks and the marks that turn the writing direction of what follows are dropped, so that
// the line keeps its place in the grid.
QString PrintableLine(const QString& text);

// A page of 80 lines by 11 columns. Lines are filled from the top, cells from column 1 on;
// lines beyond the last filled one stay margin and line end.
class PageGrid {
public:
    // The next line, its cells from column 1; a line beyond the page or cells beyond the
    // ninth are dropped.
    void add(std::initializer_list<QString> cells);
    void addCells(const QStringList& cells);
    void blank() { ++m_line; }
    int linesUsed() const { return m_line; }
    QString text() const;

private:
    std::array<std::array<QString, ColumnsPerLine - 2>, LinesPerPage> m_cells{};
    int m_line = 0;
};

} // namespace record
