#include "common/texts.h"

#include "common/stringtable.h"

QString Texts::str(int index) const {
    return StringTable::instance().text(m_preferences.language(), index);
}
