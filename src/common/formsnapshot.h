#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

class Form;

// A window model as text, for scripts and tests: one line per element and property,
// "element<TAB>property<TAB>value", sorted by element and then property. Which properties
// an element has follows its kind; an LED painted by the blink timers shows the state they
// paint from as "ledstate" instead of its value. Numbers in the C locale, colours as the
// tool's colour numbers in decimal, booleans 0 and 1, a dot's colour empty when there is
// none; a text's line breaks, tabs and backslashes as \n, \r, \t and \\.
QStringList FormSnapshot(const Form& form, const QSet<QString>& rhythmLeds = {});
