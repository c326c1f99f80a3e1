#include "link/recognition.h"

#include "shell/appcontext.h"

Recognition::Recognition(AppContext& app)
    : QObject()
    , m_app(app) {}

void Recognition::SearchStep() {}

void Recognition::RcvDataHandle(const Bytes&) {}

void Recognition::StartExtKOMPA(const QString&) {}
