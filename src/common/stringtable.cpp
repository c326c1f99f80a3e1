#include "common/stringtable.h"

#include <QFile>

#include <algorithm>

namespace {

QByteArray readCompiledTable() {
    QFile file(QStringLiteral(":/common/strings.tsv"));
    if (!file.open(QIODevice::ReadOnly)) return {};
    return file.readAll();
}

} // namespace

const StringTable& StringTable::instance() {
    static const StringTable table = [] {
        // The table lives in a static library, whose resources are not registered by
        // themselves.
        Q_INIT_RESOURCE(strings);
        return StringTable(readCompiledTable());
    }();
    return table;
}

StringTable::StringTable(const QByteArray& tsv)
    : m_rows(IndexLimit) {
    const QList<QByteArray> lines = tsv.split('\n');
    // The first line names the columns.
    for (qsizetype i = 1; i < lines.size(); ++i)
        addLine(lines[i]);
    std::sort(m_indices.begin(), m_indices.end());
}

void StringTable::addLine(const QByteArray& line) {
    QByteArray content = line;
    if (content.endsWith('\r')) content.chop(1);
    const QList<QByteArray> fields = content.split('\t');
    if (fields.size() != 1 + LanguageCount) return;
    bool isNumber = false;
    const int index = fields[0].toInt(&isNumber);
    if (!isNumber || index < 0 || index >= IndexLimit || m_indices.contains(index)) return;
    Row& row = m_rows[static_cast<std::size_t>(index)];
    for (int language = 0; language < LanguageCount; ++language)
        row[static_cast<std::size_t>(language)] = QString::fromUtf8(fields[language + 1]);
    m_indices.append(index);
}

QString StringTable::text(Language language, int index) const {
    if (index < 0 || index >= IndexLimit) return {};
    const Row& row = m_rows[static_cast<std::size_t>(index)];
    return row[static_cast<std::size_t>(languageNumber(language) - 1)];
}

QList<int> StringTable::indices() const {
    return m_indices;
}
