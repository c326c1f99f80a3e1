#include "engine/pollengine.h"

#include "shell/appcontext.h"

PollEngine::PollEngine(AppContext& app)
    : QObject()
    , m_app(app) {}

void PollEngine::SendCommand(int) {}

void PollEngine::tmrAutoSend_Timer() {}

void PollEngine::tmrTimeout_Timer() {}

void PollEngine::stop() {}

void PollEngine::writeSent(int) {}

void PollEngine::sendRead() {}

void PollEngine::sendWrite() {}
