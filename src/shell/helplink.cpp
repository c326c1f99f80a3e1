#include "shell/helplink.h"

#include "common/formmodel.h"
#include "common/services.h"
#include "common/texts.h"
#include "shell/dialog_elements.h"

#include <QDir>
#include <QFileInfo>

namespace {

const QString kParagraph = QStringLiteral("\r\n\r\n");
const QString kEvince = QStringLiteral("evince");
const QString kOkular = QStringLiteral("okular");
// An installation keeps the manual with the program's other data, below the prefix the
// program lies in.
const QString kInstalledManual = QStringLiteral("../share/mq27diag/manual");
// The device kind this tool serves, whose manual the About window names.
constexpr int kManualDevice = 10;
constexpr int kStringManual = 802;

// "007", "-007": the number in at least three places, the sign in front.
QString threeDigits(int number) {
    const QString digits = QStringLiteral("%1").arg(qAbs(qint64{number}), 3, 10, QLatin1Char('0'));
    return number < 0 ? u'-' + digits : digits;
}

} // namespace

HelpLink::HelpLink(const Services& services, const Texts& texts, Form& about)
    : m_services(services)
    , m_texts(texts)
    , m_about(about) {}

void HelpLink::ShowHelp(int DeviceNumber, int Mode, int PDF_Target, const QString& Remark) {
    if (Mode != 1 && Mode != 2) return;
    const QString file = HelpFile(DeviceNumber);
    const QString destination = threeDigits(PDF_Target);
    if (Mode == 2)
        Describe(PDF_Target, file, destination, Remark);
    else
        Open(file, destination);
}

// Only viewers that can be told a named destination on their command line will do: one
// that opens the first page would leave the user searching.
QString HelpLink::PdfViewer() const {
    for (const QString& name : {kEvince, kOkular}) {
        const QString path = m_services.launcher->findExecutable(name);
        if (!path.isEmpty()) return path;
    }
    return {};
}

QString HelpLink::HelpFileName(int deviceNumber, Language language) {
    return QStringLiteral("KompaHelp_%1_%2.pdf")
        .arg(threeDigits(deviceNumber), threeDigits(languageNumber(language)));
}

QString HelpLink::HelpFile(int deviceNumber) const {
    const QString name = HelpFileName(deviceNumber, m_texts.language());
    const QDir programDir(m_services.programDir);
    const QString beside = programDir.filePath(name);
    const QString installed = QDir::cleanPath(programDir.filePath(kInstalledManual + u'/' + name));
    return !QFileInfo::exists(beside) && QFileInfo::exists(installed) ? installed : beside;
}

void HelpLink::ShowManualPath() {
    m_about.setCaption(
        frmAbout::lblManual,
        m_texts.str(kStringManual).arg(QDir::toNativeSeparators(HelpFile(kManualDevice))));
}

QStringList HelpLink::ViewerArguments(const QString& viewer, const QString& file,
                                      const QString& destination) {
    if (QFileInfo(viewer).fileName() == kOkular) return {file + u'#' + destination};
    return {QStringLiteral("--named-dest=") + destination, file};
}

void HelpLink::Describe(int target, const QString& file, const QString& destination,
                        const QString& remark) {
    const QString text = QStringLiteral("Helptext No. :         ") + QString::number(target) +
                         kParagraph + QStringLiteral("PDF-File :                ") + file +
                         kParagraph + QStringLiteral("PDF-File Target :    ") + destination +
                         kParagraph + QStringLiteral("Remark :                 ") + remark;
    m_services.dialogs->information(text, m_texts.appTitle);
}

void HelpLink::Open(const QString& file, const QString& destination) {
    UserDialogs& dialogs = *m_services.dialogs;
    ProcessLauncher& launcher = *m_services.launcher;
    if (!QFileInfo::exists(file)) {
        dialogs.information(m_texts.messages.fileMissing + kParagraph + file, m_texts.appTitle);
        return;
    }
    const QString viewer = PdfViewer();
    if (!viewer.isEmpty())
        launcher.startDetached(viewer, ViewerArguments(viewer, file, destination));
    // The page at its start is better than no help; only a desktop that opens no PDF at all
    // leaves the user with the message.
    else if (!launcher.openDocument(file))
        dialogs.information(m_texts.messages.viewerMissing, m_texts.appTitle);
}
