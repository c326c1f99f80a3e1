#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <array>
#include <vector>

// The numbered texts of the user interface in German, English, French and Dutch, read once
// from the table compiled into the program.
class StringTable {
public:
    static constexpr int German = 1;
    static constexpr int English = 2;
    static constexpr int French = 3;
    static constexpr int Dutch = 4;

    // Loads the compiled-in table on first use.
    static const StringTable& instance();

    // Text of string `index` in `language` (1 German, 2 English, 3 French, 4 Dutch; any other
    // number acts as 1). An index the table lacks gives an empty text.
    QString text(int language, int index) const;

    // 1 to 4 as they are; every other number is German.
    static int clampLanguage(int language);

    // The indices the table holds, in ascending order.
    QList<int> indices() const;

private:
    static constexpr int LanguageCount = 4;
    // A string's resource number is language * 1000 + index, so an index stays below 1000.
    static constexpr int IndexLimit = 1000;

    using Row = std::array<QString, LanguageCount>;

    explicit StringTable(const QByteArray& tsv);
    void addLine(const QByteArray& line);

    std::vector<Row> mRows; // by index; rows the table lacks stay empty
    QList<int> mIndices;
};
