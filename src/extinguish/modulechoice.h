#pragma once

#include <QString>

class Form;
class QLocale;
class ValueStore;

// The choice of a bus module by its serial number, shared by the module windows: one row
// per place on the bus, its row index the module's index.
namespace modulechoice {

inline constexpr int kModules = 10;
// The string of the note that a module is off the bus.
inline constexpr int kStringOffline = 540;

// Ten rows "0", the first chosen, as a window starts.
void resetRows(Form& window, const QString& combo);

// The rows follow the serial numbers on the bus. A module that stops answering keeps its row
// until the device reports its serial number as 0; the row chosen stays chosen.
void followBus(Form& window, const QString& combo, ValueStore& values, const QLocale& locale);

// A serial number as the rows and the windows show it.
QString serialText(double serial, const QLocale& locale);

// A module index that the getters take.
int clamped(int index);
// The row chosen in `combo`, as a module index.
int chosen(const Form& window, const QString& combo);

} // namespace modulechoice
