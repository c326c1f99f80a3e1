#pragma once

#include <optional>

#include <QLocale>
#include <QString>

class Form;

// Why a command refuses a number typed into a field.
enum class Refusal {
    None,
    NoNumber,   // the text is no number
    OutOfRange, // the number lies outside the field's limits
    Together,   // good by itself, out of range together with another field
};

// A number typed into a field, as its window read it, and what the command that takes it
// made of it. A command leaves a number it does not use unchecked, and its field as it is.
struct TypedNumber {
    QString text;                // what the field holds
    std::optional<double> typed; // that text read as a number

    bool checked = false;
    // Passed its own check: the value as the field shows it from now on, with `decimals`.
    std::optional<double> shown;
    int decimals = 0;
    Refusal refusal = Refusal::None;

    bool refused() const { return refusal != Refusal::None; }
};

namespace fieldcheck {

// The number a field's text stands for: a comma counts as the decimal mark, and one mark at
// most; nothing for any other text, for an empty one and for one longer than 16 characters.
std::optional<double> number(const QString& text);

TypedNumber typed(const QString& text);

// Judges `n` against its limits: within them, it is shown rounded to `decimals` (0 to 5;
// any other count keeps the value as it is); outside them, or no number, it is refused.
// The value the check passes, or nothing.
std::optional<double> check(TypedNumber& n, double minimum, double maximum, int decimals);

// The text of a checked value as a field with `decimals` shows it.
QString text(double value, int decimals, const QLocale& locale);

// What the field of `n` shows after its check: a value that passed it in its normal form,
// with the window's decimal mark; anything else as it was typed.
QString shownText(const TypedNumber& n, const QLocale& locale);

} // namespace fieldcheck

// The field's text and what it reads as.
TypedNumber readNumber(const Form& form, const QString& field);

// Shows a command's verdict on `field`: a value that passed its own check is written back
// in its normal form, with the window's decimal mark, and a refused field turns yellow and
// keeps the user's text; any other checked field gets the window colour. `n` then holds
// the text the field shows.
void showVerdict(Form& form, const QString& field, TypedNumber& n, const QLocale& locale);

// The one input check of a single field: true when its text is bad, which then turns the
// field yellow; a good value is written back as showVerdict does.
bool CheckTextInput(Form& form, const QString& field, double minimum, double maximum, int decimals,
                    const QLocale& locale);
