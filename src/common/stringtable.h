#pragma once

#include "common/preferences.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <array>
#include <vector>

// The numbered texts of the user interface in German, English, French and Dutch, read once
// from the table compiled into the program.
class StringTable {
public:
    // Loads the compiled-in table on first use.
    static const StringTable& instance();

    // Text of string `index` in `language`. An index the table lacks gives an empty text.
    QString text(Language language, int index) const;

    // The indices the table holds, in ascending order.
    QList<int> indices() const;

private:
    static constexpr int LanguageCount = 4;
    // A string's resource number is language * 1000 + index, so an index stays below 1000.
    static constexpr int IndexLimit = 1000;

    using Row = std::array<QString, LanguageCount>;

    explicit StringTable(const QByteArray& tsv);
    void addLine(const QByteArray& line);

    std::vector<Row> m_rows; // by index; rows the table lacks stay empty
    QList<int> m_indices;
};
