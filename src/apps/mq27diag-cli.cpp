// Headless commands of the diagnosis tool.
//
//   mq27diag-cli dump FILE.ko3 [--json]
//
// Loads a saved read-out as the tool does and prints every logged data object: its row
// text, a tab, its value.

#include "files/offlineload.h"
#include "logger/dataobjects.h"
#include "values/mq27values.h"

#include <cstdio>

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

void printLine(FILE* stream, const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    std::fwrite(utf8.constData(), 1, static_cast<std::size_t>(utf8.size()), stream);
    std::fputc('\n', stream);
}

int usage() {
    printLine(stderr, QStringLiteral("usage: mq27diag-cli dump FILE.ko3 [--json]"));
    return 2;
}

void printRows(clsMQ27Values& values, bool json) {
    if (!json) {
        VisitDataObjects(values, [](const DataObject& row) {
            printLine(stdout, row.text + QLatin1Char('\t') + FormatValueC(row));
        });
        return;
    }
    QJsonArray rows;
    VisitDataObjects(values, [&rows](const DataObject& row) {
        rows.append(QJsonObject{{QStringLiteral("text"), row.text},
                                {QStringLiteral("type"), QString(QLatin1Char(row.type))},
                                {QStringLiteral("value"), FormatValueC(row)}});
    });
    std::fputs(QJsonDocument(rows).toJson(QJsonDocument::Indented).constData(), stdout);
}

int dump(const QString& path, bool json) {
    clsMQ27Values values;
    const offline::LoadReport report = offline::LoadIntoStore(path, values);
    if (!report.error.isEmpty()) {
        printLine(stderr, path + QStringLiteral(": ") + report.error);
        return 1;
    }
    for (const QString& family : report.otherFamilies)
        printLine(stderr, path + QStringLiteral(": telegram of another device family: ") + family);
    if (report.stored == 0) {
        printLine(stderr, path + QStringLiteral(": no readable telegram of this device"));
        return 1;
    }
    if (report.truncated)
        printLine(stderr, path + QStringLiteral(": the file ends inside a telegram"));
    printRows(values, json);
    return 0;
}

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    if (args.size() < 2 || args.size() > 3 || args[0] != QLatin1String("dump")) return usage();
    const bool json = args.size() == 3;
    if (json && args[2] != QLatin1String("--json")) return usage();
    return dump(args[1], json);
}
