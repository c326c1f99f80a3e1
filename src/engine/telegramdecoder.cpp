#include "engine/telegramdecoder.h"

#include "common/appstate.h"
#include "common/mainview_elements.h"
#include "engine/pollengine.h"
#include "engine/telegramstore.h"
#include "link/devicesession.h"
#include "values/devicevalues.h"

#include <QLocale>

namespace {

constexpr int kTabPages = 8;

} // namespace

TelegramDecoder::TelegramDecoder(AppState& state, DeviceSession& session, PollEngine& engine,
                                 DeviceValues& values)
    : QObject()
    , m_state(state)
    , m_session(session)
    , m_engine(engine)
    , m_values(values) {
    m_tmrReceiveLED.disable();
    connect(&m_tmrReceiveLED, &FormTimer::timeout, this, [this] {
        Form& display = m_state.forms.frmDisplay();
        for (int i = 0; i < kTabPages; ++i)
            display.setBackColor(frmDisplay::picReceiveLED[i], colors::kWindowBackground);
        m_tmrReceiveLED.disable();
    });
}

void TelegramDecoder::DataDecoder(const Bytes& telegram) {
    const std::optional<QDateTime> recorded = engine::TelegramTime(telegram);
    if (!recorded) return;
    m_session.setTelegramTime(*recorded);
    setTitleBar();

    const engine::TelegramHead head = engine::ReadTelegramHead(telegram);
    if (m_session.searchRunning()) {
        Q_EMIT searchAnswer(head.serialNumber);
        return;
    }

    const engine::StoreOutcome outcome =
        engine::StoreTelegram(m_values.create(), m_session.takenOnSerialNo(), telegram);
    if (outcome.newDevice) takeOn(head.serialText);
    if (outcome.result != engine::StoreResult::Stored) return;

    ShowReceiveActivity();
    m_session.setSerialNo(head.serialText);
    if (!m_engine.isWriteQueued()) {
        chooseNextTelegram(head.command);
        if (head.command == 5) endConnectionPhase();
    }
    m_engine.tmrAutoSend().restart();
    if (m_state.forms.frmDisplay().isShown()) Q_EMIT displayRefreshDue();
    // Also while a write waits in the queue: a recording has a record for every read-out.
    if (head.command == 5) Q_EMIT readOutRecorded();
}

void TelegramDecoder::ShowReceiveActivity() {
    Form& display = m_state.forms.frmDisplay();
    for (int i = 0; i < kTabPages; ++i)
        display.setBackColor(frmDisplay::picReceiveLED[i], colors::kGreen);
    m_tmrReceiveLED.enable();
}

// The title carries the time of the telegram, which for a loaded file is the time it was
// recorded.
void TelegramDecoder::setTitleBar() {
    const QLocale locale = QLocale::system();
    m_state.forms.frmDisplay().setTitle(
        m_state.g.gAppTitle + QStringLiteral(" - [") +
        locale.toString(m_session.telegramTime().date(), QLocale::ShortFormat) + QLatin1Char(' ') +
        locale.toString(m_session.telegramTime().time(), QLocale::LongFormat) + QLatin1Char(']'));
}

// The read-out of a new device goes into the hidden main view; it shows itself again with
// complete data after telegram 5.
void TelegramDecoder::takeOn(const QString& serialNo) {
    Form& display = m_state.forms.frmDisplay();
    display.hide();
    display.setValue(frmDisplay::tabDisplay.whole(), 0);
    Q_EMIT deviceTakenOn(serialNo);
}

void TelegramDecoder::chooseNextTelegram(int command) {
    static constexpr int kNextAfter[] = {0, 2, 3, 5, 5, 2};
    if (command >= 1 && command <= 5) m_engine.setNextRead(kNextAfter[command]);
}

void TelegramDecoder::endConnectionPhase() {
    Forms& forms = m_state.forms;
    Form& display = forms.frmDisplay();
    if (!display.isShown()) display.show();
    forms.frmMQ27D().hide();
    forms.frmConnect().unload();
    Q_EMIT readOutComplete(m_session.serialNo().toDouble());
    forms.frmLogdataDev().load();
}
