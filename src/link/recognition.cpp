#include "link/recognition.h"

#include "engine/telegramdecoder.h"
#include "link/seriallink.h"
#include "link/telegram.h"
#include "search/devicesearch.h"
#include "shell/appcontext.h"
#include "shell/appshell.h"
#include "shell/languages.h"
#include "values/conversions.h"

#include <QDir>
#include <QFileInfo>

namespace {

const QString kLblDevice = QStringLiteral("lblDevice");

#ifdef Q_OS_WIN
const QString kSuiteProgram = QStringLiteral("Kompa3.exe");
#else
const QString kSuiteProgram = QStringLiteral("Kompa3");
#endif

// The search telegrams of the own and the second family: command 1, serial number 0.
const Bytes kSearchOwnFamily{0x0A, 0x01, 0x00, 0x00, 0x00, 0x00};
const Bytes kSearchSecondFamily{0x07, 0x01, 0x00, 0x00, 0x00, 0x00};

} // namespace

Recognition::Recognition(AppContext& app)
    : QObject()
    , m_app(app) {}

void Recognition::SearchStep() {
    SerialLink& link = m_app.link();
    Form& startWindow = m_app.forms().frmMQ27D();
    if (!link.isPortOpen()) {
        startWindow.setCaption(kLblDevice, QStringLiteral("COM port OFF"));
        return;
    }
    ++m_counter;
    if (m_counter == 1) {
        startWindow.setCaption(kLblDevice, QStringLiteral("searching for MQ27..//...."));
        link.MakeSendString(kSearchOwnFamily, true);
    } else if (m_counter == 2) {
        startWindow.setCaption(kLblDevice, QStringLiteral("searching for MQ20....//.."));
        link.MakeSendString(kSearchSecondFamily, true);
    } else {
        startWindow.setCaption(kLblDevice, QStringLiteral("searching for MQLR......//"));
        link.DataTx(telegram::ZeroCommand());
        m_counter = 0;
    }
}

void Recognition::RcvDataHandle(const Bytes& t) {
    if (m_app.g.gClosing) return;
    const std::optional<telegram::Accepted> accepted = telegram::AcceptStampedTelegram(t);
    if (!accepted) return;

    SerialLink& link = m_app.link();
    link.ReceiveLEDGreen();
    m_app.forms().frmMQ27D().setCaption(kLblDevice, telegram::DeviceKindName(accepted->deviceKind) +
                                                        QStringLiteral(" recognized"));
    link.RestartSearchTimer();

    if (accepted->deviceKind != telegram::kOwnDeviceKind) {
        StartExtKOMPA(link.dataFromFile() ? link.loadedFileName() : QString());
        return;
    }
    handleOwnTelegram(t, static_cast<std::size_t>(accepted->headerLength));
}

// A device that isn't known yet must introduce itself with telegram 1; while the device
// search runs, every device is welcome.
void Recognition::handleOwnTelegram(const Bytes& t, std::size_t h) {
    m_app.createValues();
    if (t.size() < h + 6) return;
    const QString serialNo =
        QString::number(Byte2ULong(t[h + 2], t[h + 3], t[h + 4], t[h + 5]), 'f', 0);
    const int command = t[h + 1];

    const bool known =
        serialNo == m_app.forms().frmDisplay().caption(QStringLiteral("lblSerialNo_0"));
    if (!known && !m_app.g.gDeviceSearch) {
        if (command != 1) return;
        m_app.languages().SwitchToLanguage(m_app.g.gLanguage);
        m_app.search().ShowConnect(serialNo + QStringLiteral(" - ") + m_app.g.gAppTitle);
    }
    Q_EMIT ownTelegram(t);
    m_app.decoder().DataDecoder(t);
}

void Recognition::StartExtKOMPA(const QString& file) {
    const QString program = QDir(m_app.services().programDir).filePath(kSuiteProgram);
    const QStringList arguments = file.isEmpty() ? QStringList() : QStringList{file};
    // The suite opens the port itself.
    m_app.link().closePort();
    if (!m_app.g.gClosing) {
        m_app.services().launcher->startDetached(program, arguments);
        if (!QFileInfo::exists(program)) {
            m_app.services().dialogs->messageBox(
                QStringLiteral("Program not found\r\n\r\n") + QDir::toNativeSeparators(program),
                QStringLiteral("Error"), UserDialogs::Buttons::Ok, UserDialogs::Icon::Critical,
                UserDialogs::Answer::Ok);
        }
    }
    m_app.shell().CloseApplication();
}
