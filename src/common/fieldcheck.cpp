#include "common/fieldcheck.h"

#include "common/colors.h"
#include "common/formmodel.h"
#include "common/numberformat.h"

namespace {

// Longer texts are refused before they are read as a number.
constexpr qsizetype kLongestText = 16;

bool hasFormat(int decimals) {
    return decimals >= 0 && decimals <= 5;
}

} // namespace

namespace fieldcheck {

std::optional<double> number(const QString& text) {
    if (text.isEmpty() || text.size() > kLongestText) return std::nullopt;
    QString point = text;
    point.replace(u',', u'.');
    if (point.count(u'.') > 1) return std::nullopt;
    return numberformat::plainDecimal(point);
}

TypedNumber typed(const QString& text) {
    TypedNumber n;
    n.text = text;
    n.typed = number(text);
    return n;
}

std::optional<double> check(TypedNumber& n, double minimum, double maximum, int decimals) {
    n.checked = true;
    n.decimals = decimals;
    n.shown.reset();
    n.refusal = Refusal::None;
    if (!n.typed) {
        n.refusal = Refusal::NoNumber;
        return std::nullopt;
    }
    const double value = *n.typed;
    if (!(value >= minimum && value <= maximum)) {
        n.refusal = Refusal::OutOfRange;
        return std::nullopt;
    }
    // What goes out is the value as the field shows it afterwards.
    n.shown = hasFormat(decimals) ? numberformat::plainDecimal(text(value, decimals, QLocale::c()))
                                  : std::optional<double>(value);
    if (!n.shown) n.refusal = Refusal::OutOfRange;
    return n.shown;
}

QString text(double value, int decimals, const QLocale& locale) {
    return hasFormat(decimals) ? numberformat::fixed(value, decimals, locale)
                               : numberformat::plain(value, locale);
}

QString shownText(const TypedNumber& n, const QLocale& locale) {
    if (!n.checked || !n.shown || !n.typed) return n.text;
    return text(*n.typed, n.decimals, locale);
}

} // namespace fieldcheck

TypedNumber readNumber(const Form& form, const QString& field) {
    return fieldcheck::typed(form.caption(field));
}

void showVerdict(Form& form, const QString& field, TypedNumber& n, const QLocale& locale) {
    if (!n.checked) return;
    if (n.shown) {
        n.text = fieldcheck::shownText(n, locale);
        form.setCaption(field, n.text);
    }
    form.setBackColor(field, n.refused() ? colors::kYellow : colors::kWindowBackground);
}

bool CheckTextInput(Form& form, const QString& field, double minimum, double maximum, int decimals,
                    const QLocale& locale) {
    TypedNumber n = readNumber(form, field);
    fieldcheck::check(n, minimum, maximum, decimals);
    showVerdict(form, field, n, locale);
    return n.refused();
}
