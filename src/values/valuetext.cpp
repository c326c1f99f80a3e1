#include "values/valuetext.h"

namespace valuetext {

QString Description::joined() const {
    QString out;
    out.reserve(text.size() + 40);
    switch (scope) {
    case Scope::None:
        break;
    case Scope::Detector:
        out += u"Detektor "_s % Number(scopeNumber).view() % u": "_s;
        break;
    case Scope::Sensor:
        out += u"NTC Fühler "_s % Number(scopeNumber).view() % u": "_s;
        break;
    case Scope::Module:
        out += u"Löscheinschub "_s % Number(scopeNumber).view() % u": "_s;
        break;
    case Scope::Relay:
        out += u"Relais "_s % Number(scopeNumber).view() % u' ';
        break;
    }
    if (bit >= 0) out += u"Bit "_s % Number(bit, bitDigits).view() % u": "_s;
    out += text;
    if (trailingNumber >= 0) out += Number(trailingNumber).view();
    return out;
}

} // namespace valuetext
