#include "shell/livesession.h"

#include "common/regsettings.h"
#include "engine/telegramdecoder.h"
#include "files/devicefiles.h"
#include "link/qtserialportdevice.h"
#include "link/recognition.h"
#include "link/seriallink.h"
#include "link/serialport.h"
#include "link/telegram.h"
#include "shell/appshell.h"
#include "shell/program.h"
#include "shell/startwindow_elements.h"

#include <QDir>
#include <QFileInfo>

namespace {

// The port that a path given on the command line is opened as.
constexpr int kPathPort = 1;

bool portNumber(const QString& port, int& number) {
    bool ok = false;
    number = port.toInt(&ok);
    return ok && number >= kFirstPort && number <= kLastPort;
}

} // namespace

LiveSession::LiveSession(const Options& options)
    : m_port(std::make_unique<QtSerialPortDevice>())
    , m_options(options) {
    m_program = std::make_unique<Program>(m_outside.services(), m_port.get());
    m_program->preferences().setLocale(QLocale::c());

    TelegramDecoder& decoder = m_program->decoder();
    connect(&decoder, &TelegramDecoder::ReadOutRecorded, this, &LiveSession::onReadOutRecorded);
    // The start window names the family of every accepted telegram before the hand-over.
    connect(&m_program->recognition(), &Recognition::CloseRequested, this, [this] {
        QString caption = m_program->forms().frmMQ27D().caption(frmMQ27D::lblDevice);
        caption.remove(QStringLiteral(" recognized"));
        m_otherFamily = caption;
        Q_EMIT handedOver(caption);
    });
    connect(m_port.get(), &SerialPortDevice::lost, this, [this] {
        m_lineLost = true;
        Q_EMIT lost();
    });
}

LiveSession::~LiveSession() {
    // Nothing of the line may reach the program while it is taken down.
    m_program->link().StopTimers();
    m_port->close();
}

QString LiveSession::portPath(const QString& port) {
    int number = 0;
    if (portNumber(port, number)) return QtSerialPortDevice::devicePath(number);
    return port;
}

std::optional<QString> LiveSession::start(const QString& port) {
    int number = 0;
    if (!portNumber(port, number)) {
        // A path becomes a numbered port of this process alone, as the tool maps them.
        qputenv(QStringLiteral("MQ27D_PORT%1").arg(kPathPort).toLatin1().constData(),
                port.toLocal8Bit());
        number = kPathPort;
    }
    RegSettings& settings = m_program->settings();
    settings.SetPort(number);
    settings.SetLanguage(languageNumber(m_options.language));
    settings.SetSmoke(static_cast<int>(m_options.smokeUnit));
    settings.SetTemperature(static_cast<int>(m_options.temperatureUnit));
    m_program->shell().Startup(QString());
    const SerialLink& link = m_program->link();
    if (link.IsPortOpen()) return std::nullopt;
    // The start window's reason, in the session's language; it names the port.
    const QString reason = link.PortReason();
    return reason.isEmpty() ? port + QStringLiteral(": the port could not be opened") : reason;
}

// The decoder has saved and refreshed before it reports the complete read-out.
void LiveSession::onReadOutRecorded() {
    if (m_readOutDone) {
        Q_EMIT cycleComplete();
        return;
    }
    m_readOutDone = true;
    const QDir folder(m_program->files().AutoSaveFolder());
    const QFileInfoList saved = folder.entryInfoList(QDir::Files, QDir::Time);
    if (!saved.isEmpty()) m_autoSavedFile = saved.first().absoluteFilePath();
    Q_EMIT ReadOutComplete();
}

#include "moc_livesession.cpp"
