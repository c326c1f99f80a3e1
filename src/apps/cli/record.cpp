// The headless record: mq27diag-cli record FILE.ko3 [--language de|en|fr|nl]
// [--comment TEXT]... [--pdf OUT.pdf]. The saved read-out goes through the main view as in
// the tool, and the record is read off it as the record window does.

#include "apps/cli/record.h"

#include "common/forms.h"
#include "record/protocol.h"
#include "record/ui/recordprint.h"
#include "shell/languages.h"
#include "shell/offlineview.h"
#include "shell/program.h"

#include <cstdio>
#include <memory>
#include <optional>

#include <QCoreApplication>
#include <QGuiApplication>
#include <QStringList>

namespace {

void printError(const QString& text) {
    const QByteArray utf8 = text.toUtf8() + '\n';
    std::fwrite(utf8.constData(), 1, static_cast<std::size_t>(utf8.size()), stderr);
}

struct RecordArgs {
    QString file;
    Language language = Language::English;
    QStringList comments;
    QString pdf;
};

// Nothing when the arguments are not those of the command; the reason goes to stderr.
std::optional<RecordArgs> parseRecordArgs(const QStringList& args) {
    static const QStringList kLanguages = {QStringLiteral("de"), QStringLiteral("en"),
                                           QStringLiteral("fr"), QStringLiteral("nl")};
    RecordArgs parsed;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& arg = args[i];
        const bool hasValue = i + 1 < args.size();
        if (arg == u"--language" && hasValue && kLanguages.contains(args[i + 1])) {
            parsed.language =
                languageFromNumber(static_cast<int>(kLanguages.indexOf(args[++i])) + 1);
        } else if (arg == u"--comment" && hasValue) {
            parsed.comments << args[++i];
        } else if (arg == u"--pdf" && hasValue && !args[i + 1].isEmpty()) {
            parsed.pdf = args[++i];
        } else if (!arg.startsWith(u"--") && parsed.file.isEmpty()) {
            parsed.file = arg;
        } else {
            printError(QStringLiteral("record: unexpected argument: ") + arg);
            return std::nullopt;
        }
    }
    if (parsed.file.isEmpty()) {
        printError(QStringLiteral("record: no file given"));
        return std::nullopt;
    }
    if (parsed.comments.size() > 2) {
        printError(QStringLiteral("record: at most two comment lines"));
        return std::nullopt;
    }
    return parsed;
}

int run(const RecordArgs& args) {
    OfflineView::Options options;
    options.language = args.language;
    OfflineView offline(options);
    if (const auto error = offline.load(args.file)) {
        printError(*error);
        return cli::kRecordUnreadable;
    }
    Program& program = offline.program();
    program.languages().SwitchToLanguage(languageNumber(args.language));
    Protocol& protocol = program.protocol();
    protocol.Build(args.comments.value(0), args.comments.value(1));
    const QStringList pages = protocol.Pages();

    if (!args.pdf.isEmpty()) {
        const QString failure =
            recordprint::writePdf(args.pdf, pages, program.forms().frmProtocol().title());
        if (failure.isEmpty()) return cli::kRecordDone;
        printError(args.pdf + QStringLiteral(": ") + failure);
        return cli::kRecordNotWritten;
    }
    const QByteArray text = pages.join(QString()).toUtf8();
    const std::size_t written =
        std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stdout);
    if (written != static_cast<std::size_t>(text.size()) || std::fflush(stdout) != 0) {
        printError(QStringLiteral("record: standard output cannot be written"));
        return cli::kRecordNotWritten;
    }
    return cli::kRecordDone;
}

} // namespace

namespace cli {

int record(int argc, char* argv[]) {
    QStringList args;
    for (int i = 2; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    const auto parsed = parseRecordArgs(args);
    // A PDF needs fonts, which a graphical application brings; it needs no screen.
    std::unique_ptr<QCoreApplication> app;
    if (parsed && !parsed->pdf.isEmpty()) {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
        app = std::make_unique<QGuiApplication>(argc, argv);
    } else {
        app = std::make_unique<QCoreApplication>(argc, argv);
    }
    if (!parsed) {
        printError(QStringLiteral("usage: ") + QString::fromUtf8(MQ27_CLI_RECORD_USAGE).trimmed());
        return kRecordUsage;
    }
    return run(*parsed);
}

} // namespace cli
