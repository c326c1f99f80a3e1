#include "shell/appcontext.h"

#include "display/mainview.h"
#include "engine/pollengine.h"
#include "engine/telegramdecoder.h"
#include "files/devicefiles.h"
#include "link/recognition.h"
#include "link/seriallink.h"
#include "search/devicesearch.h"
#include "shell/appshell.h"
#include "shell/helplink.h"
#include "shell/languages.h"
#include "shell/regsettings.h"
#include "shell/stringtable.h"
#include "values/mq27values.h"

AppContext::AppContext(Services services, QObject* parent)
    : QObject(parent)
    , m_services(std::move(services)) {
    m_settings = std::make_unique<RegSettings>(*m_services.settings);
    m_languages = std::make_unique<Languages>(*this);
    m_link = std::make_unique<SerialLink>(*this);
    m_recognition = std::make_unique<Recognition>(*this);
    m_engine = std::make_unique<PollEngine>(*this);
    m_decoder = std::make_unique<TelegramDecoder>(*this);
    m_search = std::make_unique<DeviceSearch>(*this);
    m_files = std::make_unique<DeviceFiles>(*this);
    m_mainView = std::make_unique<MainView>(*this);
    m_help = std::make_unique<HelpLink>(*this);
    m_shell = std::make_unique<AppShell>(*this);
}

AppContext::~AppContext() = default;

clsMQ27Values& AppContext::createValues() {
    if (!m_values) m_values = std::make_unique<clsMQ27Values>();
    return *m_values;
}

QString AppContext::str(int index) const {
    return StringTable::instance().text(g.gLanguage, index);
}
