#include "extinguish/modulechoice.h"

#include "common/formmodel.h"
#include "common/numberformat.h"
#include "values/valuestore.h"

#include <algorithm>

#include <QStringList>

namespace modulechoice {

void resetRows(Form& window, const QString& combo) {
    window.setItems(combo, QStringList(kModules, QStringLiteral("0")));
    window.setValue(combo, 0);
}

void followBus(Form& window, const QString& combo, ValueStore& values, const QLocale& locale) {
    QStringList rows = window.items(combo);
    rows.resize(kModules, QStringLiteral("0"));
    for (int m = 0; m < kModules; ++m) {
        const QString serial =
            serialText(values.EXT_GetSerialNum(static_cast<std::int16_t>(m)), locale);
        if (rows[m] != serial) rows[m] = serial;
    }
    if (rows != window.items(combo)) window.setItems(combo, rows);
}

// Digits in full: a round number such as 20000000 never turns into "2e+07".
QString serialText(double serial, const QLocale& locale) {
    return numberformat::fixed(serial, 0, locale);
}

int clamped(int index) {
    return std::clamp(index, 0, kModules - 1);
}

int chosen(const Form& window, const QString& combo) {
    return clamped(numberformat::toInt32(window.value(combo)).value_or(0));
}

} // namespace modulechoice
