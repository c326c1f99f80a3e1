#include "shell/helplink.h"

#include "common/appstate.h"

#include <QDir>
#include <QFileInfo>

namespace {

const QString kCrLf2 = QStringLiteral("\r\n\r\n");
const QString kEvince = QStringLiteral("evince");
const QString kOkular = QStringLiteral("okular");

// "007", "-007": the number in at least three places, the sign in front.
QString threeDigits(int number) {
    const QString digits = QStringLiteral("%1").arg(qAbs(qint64{number}), 3, 10, QLatin1Char('0'));
    return number < 0 ? u'-' + digits : digits;
}

} // namespace

HelpLink::HelpLink(AppState& state)
    : m_state(state) {}

void HelpLink::ShowHelp(int DeviceNumber, int Mode, int PDF_Target, const QString& Remark) {
    if (Mode != 1 && Mode != 2) return;
    const QString file =
        QDir(m_state.services.programDir).filePath(helpFileName(DeviceNumber, m_state.g.gLanguage));
    const QString destination = threeDigits(PDF_Target);
    if (Mode == 2)
        describe(PDF_Target, file, destination, Remark);
    else
        open(file, destination);
}

// Only viewers that can be told a named destination on their command line will do: one
// that opens the first page would leave the user searching.
QString HelpLink::PdfViewer() const {
    for (const QString& name : {kEvince, kOkular}) {
        const QString path = m_state.services.launcher->findExecutable(name);
        if (!path.isEmpty()) return path;
    }
    return {};
}

QString HelpLink::helpFileName(int deviceNumber, int language) {
    return QStringLiteral("KompaHelp_%1_%2.pdf")
        .arg(threeDigits(deviceNumber), threeDigits(language));
}

QStringList HelpLink::viewerArguments(const QString& viewer, const QString& file,
                                      const QString& destination) {
    if (QFileInfo(viewer).fileName() == kOkular) return {file + u'#' + destination};
    return {QStringLiteral("--named-dest=") + destination, file};
}

void HelpLink::describe(int target, const QString& file, const QString& destination,
                        const QString& remark) {
    const QString text = QStringLiteral("Helptext No. :         ") + QString::number(target) +
                         kCrLf2 + QStringLiteral("PDF-File :                ") + file + kCrLf2 +
                         QStringLiteral("PDF-File Target :    ") + destination + kCrLf2 +
                         QStringLiteral("Remark :                 ") + remark;
    m_state.services.dialogs->information(text, m_state.g.gAppTitle);
}

void HelpLink::open(const QString& file, const QString& destination) {
    UserDialogs& dialogs = *m_state.services.dialogs;
    const QString viewer = PdfViewer();
    if (viewer.isEmpty()) {
        dialogs.information(m_state.messages.viewerMissing, m_state.g.gAppTitle);
        return;
    }
    if (!QFileInfo::exists(file)) {
        dialogs.information(m_state.messages.fileMissing + kCrLf2 + file, m_state.g.gAppTitle);
        return;
    }
    m_state.services.launcher->startDetached(viewer, viewerArguments(viewer, file, destination));
}
