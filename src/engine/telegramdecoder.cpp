#include "engine/telegramdecoder.h"

#include "display/mainview.h"
#include "engine/pollengine.h"
#include "engine/telegramstore.h"
#include "files/devicefiles.h"
#include "search/devicesearch.h"
#include "shell/appcontext.h"

#include <QLocale>

namespace {

constexpr int kTabPages = 8;

} // namespace

TelegramDecoder::TelegramDecoder(AppContext& app)
    : QObject()
    , m_app(app) {
    m_tmrReceiveLED.disable();
    connect(&m_tmrReceiveLED, &FormTimer::timeout, this, [this] {
        Form& display = m_app.forms().frmDisplay();
        for (int i = 0; i < kTabPages; ++i)
            display.setBackColor(Form::indexed(u"picReceiveLED", i), colors::kWindowBackground);
        m_tmrReceiveLED.disable();
    });
}

void TelegramDecoder::DataDecoder(const Bytes& telegram) {
    const std::optional<QDateTime> recorded = engine::TelegramTime(telegram);
    if (!recorded) return;
    mdTelegramTime = *recorded;
    setTitleBar();

    const engine::TelegramHead head = engine::ReadTelegramHead(telegram);
    if (m_app.g.gDeviceSearch) {
        m_app.search().AddDevice(head.serialNumber);
        return;
    }

    const engine::StoreOutcome outcome =
        engine::StoreTelegram(m_app.createValues(), msLastSerialNo, telegram);
    if (outcome.newDevice) takeOn(head.serialText);
    if (outcome.result != engine::StoreResult::Stored) return;

    ShowReceiveActivity();
    setSerialLabels(head.serialText);
    PollEngine& engine = m_app.engine();
    if (!engine.mbCommandQueued) {
        chooseNextTelegram(head.command);
        if (head.command == 5) endConnectionPhase();
    }
    engine.tmrAutoSend().restart();
    if (m_app.forms().frmDisplay().isShown()) m_app.mainView().ShowData();
}

void TelegramDecoder::ShowReceiveActivity() {
    Form& display = m_app.forms().frmDisplay();
    for (int i = 0; i < kTabPages; ++i)
        display.setBackColor(Form::indexed(u"picReceiveLED", i), colors::kGreen);
    m_tmrReceiveLED.enable();
}

// The title carries the time of the telegram, which for a loaded file is the time it was
// recorded.
void TelegramDecoder::setTitleBar() {
    const QLocale locale = QLocale::system();
    m_app.forms().frmDisplay().setTitle(
        m_app.g.gAppTitle + QStringLiteral(" - [") +
        locale.toString(mdTelegramTime.date(), QLocale::ShortFormat) + QLatin1Char(' ') +
        locale.toString(mdTelegramTime.time(), QLocale::LongFormat) + QLatin1Char(']'));
}

// The read-out of a new device goes into the hidden main view; it shows itself again with
// complete data after telegram 5.
void TelegramDecoder::takeOn(const QString& serialNo) {
    Form& display = m_app.forms().frmDisplay();
    display.hide();
    display.setValue(QStringLiteral("tabDisplay"), 0);
    m_app.files().armAutoSave();
    Q_EMIT deviceTakenOn(serialNo);
}

void TelegramDecoder::setSerialLabels(const QString& serialNo) {
    Form& display = m_app.forms().frmDisplay();
    for (int i = 0; i < kTabPages; ++i)
        display.setCaption(Form::indexed(u"lblSerialNo", i), serialNo);
}

void TelegramDecoder::chooseNextTelegram(int command) {
    static constexpr int kNextAfter[] = {0, 2, 3, 5, 5, 2};
    if (command >= 1 && command <= 5) m_app.engine().miNextCommand = kNextAfter[command];
}

void TelegramDecoder::endConnectionPhase() {
    Forms& forms = m_app.forms();
    Form& display = forms.frmDisplay();
    if (!display.isShown()) display.show();
    forms.frmMQ27D().hide();
    forms.frmConnect().unload();
    m_app.files().SaveDeviceData(display.caption(QStringLiteral("lblSerialNo_0")).toDouble());
    forms.frmLogdataDev().load();
}
