#include "engine/telegramdecoder.h"

#include "engine/pollengine.h"
#include "engine/telegramstore.h"
#include "link/devicesession.h"
#include "values/devicevalues.h"

TelegramDecoder::TelegramDecoder(DeviceSession& session, PollEngine& engine, DeviceValues& values)
    : QObject()
    , m_session(session)
    , m_engine(engine)
    , m_values(values) {}

void TelegramDecoder::DataDecoder(const Bytes& telegram) {
    const std::optional<QDateTime> recorded = engine::TelegramTime(telegram);
    if (!recorded) return;
    m_session.setTelegramTime(*recorded);
    Q_EMIT TelegramTimed(*recorded);

    const engine::TelegramHead head = engine::ReadTelegramHead(telegram);
    if (m_session.searchRunning()) {
        Q_EMIT SearchAnswer(head.serialNumber);
        return;
    }

    const engine::StoreOutcome outcome =
        engine::StoreTelegram(m_values.create(), m_session.takenOnSerialNo(), telegram);
    if (outcome.newDevice) Q_EMIT DeviceTakenOn(head.serialText);
    if (outcome.result != engine::StoreResult::Stored) return;

    Q_EMIT TelegramStored();
    m_session.setSerialNo(head.serialText);
    if (!m_engine.IsWriteQueued()) {
        ChooseNextTelegram(head.command);
        if (head.command == 5) {
            Q_EMIT ConnectionPhaseEnded();
            Q_EMIT ReadOutComplete(m_session.serialNo().toDouble());
        }
    }
    m_engine.tmrAutoSend().restart();
    Q_EMIT DisplayRefreshDue();
    // Also while a write waits in the queue: a recording has a record for every read-out.
    if (head.command == 5) Q_EMIT ReadOutRecorded();
}

void TelegramDecoder::ChooseNextTelegram(int command) {
    static constexpr int kNextAfter[] = {0, 2, 3, 5, 5, 2};
    if (command >= 1 && command <= 5) m_engine.SetNextRead(kNextAfter[command]);
}

#include "moc_telegramdecoder.cpp"
