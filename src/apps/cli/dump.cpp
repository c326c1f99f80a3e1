// dump FILE.ko3 [--json]: every logged data object of a saved read-out.

#include "apps/cli/cli.h"
#include "files/offlineload.h"
#include "logger/dataobjects.h"
#include "values/valuestore.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace cli {

namespace {

void printRows(ValueStore& values, bool json) {
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

} // namespace

int dump(const QStringList& args) {
    const auto parsed = parse(args, {}, {QStringLiteral("--json")});
    if (!parsed) return kBadInput;
    if (parsed->positional.size() != 1) {
        complain(QStringLiteral("dump takes one file"));
        return kBadInput;
    }
    const QString& path = parsed->positional.first();
    ValueStore values;
    const offline::LoadReport report = offline::LoadIntoStore(path, values);
    if (!report.error.isEmpty()) {
        printLine(stderr, path + QStringLiteral(": ") + report.error);
        return kLineFault;
    }
    for (const QString& family : report.otherFamilies)
        printLine(stderr, path + QStringLiteral(": telegram of another device family: ") + family);
    if (report.stored == 0) {
        printLine(stderr, path + QStringLiteral(": no readable telegram of this device"));
        return kLineFault;
    }
    if (report.truncated)
        printLine(stderr, path + QStringLiteral(": the file ends inside a telegram"));
    printRows(values, parsed->has(QStringLiteral("--json")));
    return kDone;
}

} // namespace cli
