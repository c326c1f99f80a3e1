// Headless commands of the diagnosis tool.
//
//   mq27diag-cli dump FILE.ko3 [--json]
//       Loads a saved read-out as the tool does and prints every logged data object: its
//       row text, a tab, its value.
//
//   mq27diag-cli view FILE.ko3 [--form NAME] [--language de|en|fr|nl] [--smoke-unit m|ft]
//                              [--temperature-unit C|F]
//       Loads a saved read-out into the main view as the tool does, lets it refresh once
//       and prints a window's model (default frmDisplay): element, property, value.
//
//   mq27diag-cli record FILE.ko3 [--language de|en|fr|nl] [--comment TEXT]... [--pdf OUT.pdf]
//       The device record of a saved read-out: its two pages as text on standard output,
//       or as a PDF (see mq27diag-cli-record.cpp).

#include "apps/mq27diag-cli-record.h"
#include "common/formsnapshot.h"
#include "display/ledrhythm.h"
#include "files/offlineload.h"
#include "logger/dataobjects.h"
#include "shell/offlineview.h"
#include "shell/program.h"
#include "values/mq27values.h"

#include <cstdio>
#include <cstring>

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

void printUsage(FILE* stream) {
    printLine(stream, QStringLiteral("usage: mq27diag-cli dump FILE.ko3 [--json]"));
    printLine(stream, QStringLiteral("       mq27diag-cli view FILE.ko3 [--form NAME] "
                                     "[--language de|en|fr|nl] [--smoke-unit m|ft] "
                                     "[--temperature-unit C|F]"));
    printLine(stream, QStringLiteral(MQ27_CLI_RECORD_USAGE));
    printLine(stream, QStringLiteral("       mq27diag-cli --help | --version"));
}

int usage() {
    printUsage(stderr);
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

// The value of option `name` among `args` from `first` on, mapped by `choices`; the
// default when the option is absent, nothing when its value is not one of the choices.
std::optional<QString> option(const QStringList& args, const QString& name,
                              const QStringList& choices, const QString& fallback) {
    const qsizetype at = args.indexOf(name);
    if (at < 0) return fallback;
    if (at + 1 >= args.size() || (!choices.isEmpty() && !choices.contains(args[at + 1])))
        return std::nullopt;
    return args[at + 1];
}

int view(const QStringList& args) {
    static const QStringList kLanguages = {QStringLiteral("de"), QStringLiteral("en"),
                                           QStringLiteral("fr"), QStringLiteral("nl")};
    static const QStringList kKnownOptions = {
        QStringLiteral("--form"), QStringLiteral("--language"), QStringLiteral("--smoke-unit"),
        QStringLiteral("--temperature-unit")};
    for (qsizetype i = 1; i < args.size(); i += 2)
        if (!kKnownOptions.contains(args[i])) return usage();
    const auto form = option(args, QStringLiteral("--form"), {}, formname::frmDisplay);
    const auto language = option(args, QStringLiteral("--language"), kLanguages, kLanguages[1]);
    const auto smoke = option(args, QStringLiteral("--smoke-unit"),
                              {QStringLiteral("m"), QStringLiteral("ft")}, QStringLiteral("m"));
    const auto temperature =
        option(args, QStringLiteral("--temperature-unit"),
               {QStringLiteral("C"), QStringLiteral("F")}, QStringLiteral("C"));
    if (!form || !language || !smoke || !temperature) return usage();

    OfflineView::Options options;
    options.language = static_cast<int>(kLanguages.indexOf(*language)) + 1;
    options.smokeUnit = *smoke == u"ft" ? 2 : 1;
    options.temperatureUnit = *temperature == u"F" ? 2 : 1;
    OfflineView offline(options);
    if (!Forms::isDeclared(*form)) {
        printLine(stderr, *form + QStringLiteral(": no such window"));
        return 2;
    }
    if (const auto error = offline.load(args[0])) {
        printLine(stderr, *error);
        return 1;
    }
    const Form& window = offline.program().forms().get(*form);
    for (const QString& line : FormSnapshot(window, LedRhythm::elementsOf(*form)))
        printLine(stdout, line);
    return 0;
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc >= 2 && std::strcmp(argv[1], "record") == 0) return cli::record(argc, argv);
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    if (args == QStringList{QStringLiteral("--help")}) {
        printUsage(stdout);
        printLine(stdout, QStringLiteral("Exit status: 0 done, 1 the file is no readable read-out "
                                         "of this device, 2 wrong arguments, 3 (record) the "
                                         "output cannot be written."));
        printLine(stdout, QStringLiteral("See mq27diag-cli(1)."));
        return 0;
    }
    if (args == QStringList{QStringLiteral("--version")}) {
        printLine(stdout, QStringLiteral("mq27diag-cli " MQ27_VERSION_TEXT));
        return 0;
    }
    if (args.size() >= 2 && args[0] == QLatin1String("view")) return view(args.mid(1));
    if (args.size() < 2 || args.size() > 3 || args[0] != QLatin1String("dump")) return usage();
    const bool json = args.size() == 3;
    if (json && args[2] != QLatin1String("--json")) return usage();
    return dump(args[1], json);
}
