#include "shell/helplink.h"

#include "shell/appcontext.h"

HelpLink::HelpLink(AppContext& app)
    : m_app(app) {}

void HelpLink::ShowHelp(int, int, int, const QString&) {}

QString HelpLink::Acrobat_viewer() const {
    return {};
}

QString HelpLink::helpFileName(int, int) {
    return {};
}
