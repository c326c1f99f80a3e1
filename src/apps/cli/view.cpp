// view FILE.ko3 | --port N|PATH [--form NAME] [--language ..] [--smoke-unit ..]
//      [--temperature-unit ..] [--timeout S]: one snapshot of a window's model, of a saved
// read-out or of the device's first complete read-out.

#include "apps/cli/cli.h"
#include "common/formsnapshot.h"
#include "display/ledrhythm.h"
#include "display/mainview_elements.h"
#include "localize/localize_elements.h"
#include "shell/allforms.h"
#include "shell/offlineview.h"
#include "shell/program.h"

namespace cli {

namespace {

// The lamps that the rhythms paint: the main view's, and the two of the learn window.
QSet<QString> rhythmLamps(const QString& form) {
    if (form == frmDisplay::kName) return LedRhythm::elements();
    if (form == frmLocalizeLearn::kName)
        return {frmLocalizeLearn::picLocLearnModeLED, frmLocalizeLearn::picLocLearnActivLED};
    return {};
}

void printSnapshot(const Form& window) {
    for (const QString& line : FormSnapshot(window, rhythmLamps(window.name())))
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
    const QString form = parsed->value(QStringLiteral("--form"), frmDisplay::kName);
    if (!AllForms::isWindow(form)) {
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
