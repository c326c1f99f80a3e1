#pragma once

#include <cstdint>
#include <functional>
#include <variant>
#include <vector>

#include <QString>

class ValueStore;

// One logged data object: the row text (the getter's description, and " [unit]" where it
// has a unit), the type letter S float, I 16-bit integer, D double, T text, and the value.
struct DataObject {
    QString text;
    char type;
    std::variant<float, std::int16_t, double, QString> value;
};

// Calls `visit` once per row, in the fixed order; a row's index is its identity.
void VisitDataObjects(ValueStore& values, const std::function<void(const DataObject&)>& visit);
std::vector<DataObject> CollectDataObjects(ValueStore& values);

// The value as text in the C locale: whole numbers without decimals, floats as the shortest
// text that reads back to the same 32-bit float, doubles likewise for 64 bits, texts as they
// are; infinities "inf"/"-inf", any NaN "nan".
QString FormatValueC(const DataObject& row);
