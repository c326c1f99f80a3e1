// view FILE.ko3 | --port N|PATH [--form NAME] [--language ..] [--smoke-unit ..]
//      [--temperature-unit ..] [--timeout S]: one snapshot of a window's model, of a saved
// read-out or of the device's first complete read-out.

#include "apps/cli/cli.h"
#include "common/forms.h"
#include "common/formsnapshot.h"
#include "display/ledrhythm.h"
#include "shell/offlineview.h"
#include "shell/program.h"

namespace cli {

namespace {

void printSnapshot(const Form& window) {
    for (const QString& line : FormSnapshot(window, LedRhythm::elementsOf(window.name())))
        printLine(stdout, line);
}

} // namespace

int view(const QStringList& args) {
    const auto parsed =
        parse(args,
              kDisplayOptions + QStringList{QStringLiteral("--form"), QStringLiteral("--port"),
                                            QStringLiteral("--timeout")},
              {});
    if (!parsed) return kBadInput;
    const bool live = parsed->has(QStringLiteral("--port"));
    if (parsed->positional.size() != (live ? 0 : 1)) {
        complain(QStringLiteral("view takes one file, or --port"));
        return kBadInput;
    }
    const auto options = displayOptions(*parsed);
    const auto seconds = timeoutSeconds(*parsed, 10);
    if (!options || !seconds) return kBadInput;
    const QString form = parsed->value(QStringLiteral("--form"), formname::frmDisplay);
    if (!Forms::isDeclared(form)) {
        printLine(stderr, form + QStringLiteral(": no such window"));
        return kBadInput;
    }

    if (live) {
        LiveSession session(*options);
        if (const auto failed = connect(session, parsed->value(QStringLiteral("--port")), *seconds))
            return *failed;
        printSnapshot(session.program().forms().get(form));
        return kDone;
    }
    OfflineView::Options offline;
    offline.language = options->language;
    offline.smokeUnit = options->smokeUnit;
    offline.temperatureUnit = options->temperatureUnit;
    OfflineView file(offline);
    if (const auto error = file.load(parsed->positional.first())) {
        printLine(stderr, *error);
        return kLineFault;
    }
    printSnapshot(file.program().forms().get(form));
    return kDone;
}

} // namespace cli
