#include "common/appstate.h"

#include "common/stringtable.h"

AppState::AppState(const Services& services)
    : services(services)
    , settings(*services.settings) {}

QString AppState::str(int index) const {
    return StringTable::instance().text(g.gLanguage, index);
}

QDateTime AppState::now() const {
    return services.clock ? services.clock->now() : QDateTime::currentDateTime();
}
