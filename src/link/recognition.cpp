#include "link/recognition.h"

#include "common/lifetime.h"
#include "common/services.h"
#include "link/devicesession.h"
#include "link/seriallink.h"
#include "link/telegram.h"
#include "values/conversions.h"
#include "values/devicevalues.h"

#include <QDir>
#include <QFileInfo>

namespace {

#ifdef Q_OS_WIN
const QString kSuiteProgram = QStringLiteral("Kompa3.exe");
#else
const QString kSuiteProgram = QStringLiteral("Kompa3");
#endif

// The search telegrams of the own and the second family: command 1, serial number 0.
const Bytes kSearchOwnFamily{0x0A, 0x01, 0x00, 0x00, 0x00, 0x00};
const Bytes kSearchSecondFamily{0x07, 0x01, 0x00, 0x00, 0x00, 0x00};

} // namespace

Recognition::Recognition(DeviceSession& session, SerialLink& link, DeviceValues& values,
                         const Lifetime& life, UserDialogs& dialogs, ProcessLauncher& launcher,
                         const QString& programDir)
    : QObject()
    , m_session(session)
    , m_link(link)
    , m_values(values)
    , m_life(life)
    , m_dialogs(dialogs)
    , m_launcher(launcher)
    , m_programDir(programDir) {
    connect(&m_link, &SerialLink::TelegramReceived, this, &Recognition::RcvDataHandle);
    connect(&m_link, &SerialLink::SearchStepDue, this, &Recognition::SearchStep);
}

void Recognition::SearchStep() {
    SerialLink& link = m_link;
    if (!link.IsPortOpen()) {
        Q_EMIT LineStatusChanged(QStringLiteral("COM port OFF"));
        link.ShowPortReason();
        return;
    }
    ++m_counter;
    if (m_counter == 1) {
        Q_EMIT LineStatusChanged(QStringLiteral("searching for MQ27..//...."));
        link.MakeSendString(kSearchOwnFamily, true);
    } else if (m_counter == 2) {
        Q_EMIT LineStatusChanged(QStringLiteral("searching for MQ20....//.."));
        link.MakeSendString(kSearchSecondFamily, true);
    } else {
        Q_EMIT LineStatusChanged(QStringLiteral("searching for MQLR......//"));
        link.DataTx(telegram::ZeroCommand());
        m_counter = 0;
    }
}

void Recognition::RcvDataHandle(const Bytes& t) {
    if (m_life.closing()) return;
    const std::optional<telegram::Accepted> accepted = telegram::AcceptStampedTelegram(t);
    if (!accepted) return;

    SerialLink& link = m_link;
    link.ReceiveLEDGreen();
    Q_EMIT LineStatusChanged(telegram::DeviceKindName(accepted->deviceKind) +
                             QStringLiteral(" recognized"));
    link.RestartSearchTimer();

    if (accepted->deviceKind != telegram::kOwnDeviceKind) {
        StartExtKOMPA(link.DataFromFile() ? link.LoadedFileName() : QString());
        return;
    }
    HandleOwnTelegram(t, static_cast<std::size_t>(accepted->headerLength));
}

// A device that isn't known yet must introduce itself with telegram 1; while the device
// search runs, every device is welcome. While a device chosen in the search has not yet
// answered, a late answer of another one must not take the choice over.
void Recognition::HandleOwnTelegram(const Bytes& t, std::size_t h) {
    m_values.create();
    if (t.size() < h + 6) return;
    const QString serialNo =
        QString::number(Byte2ULong(t[h + 2], t[h + 3], t[h + 4], t[h + 5]), 'f', 0);
    const int command = t[h + 1];

    const bool known = serialNo == m_session.serialNo();
    if (known && command == 1) m_session.awaitChosenDevice(QString());
    if (!known && !m_session.searchRunning()) {
        if (command != 1 || !m_session.awaitedSerialNo().isEmpty()) return;
        Q_EMIT LanguageRefreshNeeded();
        Q_EMIT ConnectionWindowRequested(serialNo);
    }
    Q_EMIT OwnTelegramAccepted(t);
}

// The suite is looked for before it is started: a start that cannot succeed must not be
// tried, and a start that fails is said as plainly as a missing program.
void Recognition::StartExtKOMPA(const QString& file) {
    const QString program = QDir(m_programDir).filePath(kSuiteProgram);
    const QStringList arguments = file.isEmpty() ? QStringList() : QStringList{file};
    // The suite opens the port itself.
    m_link.ClosePort();
    if (!m_life.closing()) {
        if (!QFileInfo::exists(program))
            ReportStartFailure(QStringLiteral("Program not found"), program);
        else if (!m_launcher.startDetached(program, arguments))
            ReportStartFailure(QStringLiteral("Program could not be started"), program);
    }
    Q_EMIT CloseRequested();
}

void Recognition::ReportStartFailure(const QString& text, const QString& program) {
    m_dialogs.messageBox(text + QStringLiteral("\r\n\r\n") + QDir::toNativeSeparators(program),
                         QStringLiteral("Error"), UserDialogs::Buttons::Ok,
                         UserDialogs::Icon::Critical, UserDialogs::Answer::Ok);
}

#include "moc_recognition.cpp"
