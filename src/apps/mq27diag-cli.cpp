// Headless commands of the diagnosis tool: one file per command under cli/, this file only
// dispatches. See mq27diag-cli(1) and docs/command-line.md.

#include "apps/cli/cli.h"
#include "apps/cli/record.h"

#include <cstring>

#include <QCoreApplication>

namespace {

void printUsage(FILE* stream) {
    using cli::printLine;
    printLine(stream, QStringLiteral("usage: mq27diag-cli dump FILE.ko3 [--json]"));
    printLine(stream,
              QStringLiteral("       mq27diag-cli view FILE.ko3|--port N|PATH [--form NAME] "
                             "[--language de|en|fr|nl] [--smoke-unit m|ft] "
                             "[--temperature-unit C|F] [--timeout S]"));
    printLine(stream, QStringLiteral("       mq27diag-cli readout --port N|PATH [-o FILE.ko3] "
                                     "[--timeout S]"));
    printLine(stream, QStringLiteral("       mq27diag-cli watch --port N|PATH [--json] "
                                     "[--interval TELEGRAMS] [--language ..] [--smoke-unit ..] "
                                     "[--temperature-unit ..] [--timeout S]"));
    printLine(stream, QStringLiteral("       mq27diag-cli set --port N|PATH [--timeout S] "
                                     "[--airflow-init] NAME=VALUE... | --list"));
    printLine(stream, QStringLiteral(MQ27_CLI_RECORD_USAGE));
    printLine(stream, QStringLiteral("       mq27diag-cli --help | --version"));
}

} // namespace

int main(int argc, char* argv[]) {
    // A PDF needs a graphical application object, which the record command makes itself.
    if (argc >= 2 && std::strcmp(argv[1], "record") == 0) return cli::record(argc, argv);
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    if (args == QStringList{QStringLiteral("--help")}) {
        printUsage(stdout);
        cli::printLine(stdout, QStringLiteral("See mq27diag-cli(1)."));
        return 0;
    }
    if (args == QStringList{QStringLiteral("--version")}) {
        cli::printLine(stdout, QStringLiteral("mq27diag-cli " MQ27_VERSION_TEXT));
        return 0;
    }
    const QString command = args.value(0);
    const QStringList rest = args.mid(1);
    int status = cli::kBadInput;
    if (command == u"dump")
        status = cli::dump(rest);
    else if (command == u"view")
        status = cli::view(rest);
    else if (command == u"readout")
        status = cli::readout(rest);
    else if (command == u"watch")
        status = cli::watch(rest);
    else if (command == u"set")
        status = cli::set(rest);
    else
        printUsage(stderr);
    return status;
}
