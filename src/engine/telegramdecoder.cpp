#include "engine/telegramdecoder.h"

#include "shell/appcontext.h"

TelegramDecoder::TelegramDecoder(AppContext& app)
    : QObject()
    , m_app(app) {}

void TelegramDecoder::DataDecoder(const Bytes&) {}

void TelegramDecoder::ShowReceiveActivity() {}

void TelegramDecoder::deviceTakenOn(const QString&) {}

void TelegramDecoder::setTitleBar() {}

void TelegramDecoder::chooseNextTelegram(int) {}

void TelegramDecoder::endConnectionPhase() {}
