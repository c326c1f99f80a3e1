#pragma once

#include <QStringList>
#include <span>

class Form;
class Texts;
class QElapsedTimer;

// What a window says while a write waits for the device's read-back: the seconds since the
// write went out and the fields that still differ. `label` shows it while `waiting`, and
// goes empty and hidden otherwise.
void showWaitingNote(const Texts& texts, Form& form, const QString& label, bool waiting,
                     const QElapsedTimer& sentAt, const QStringList& differing);

// One compared row of a settings window: the name of the setting, the label with the
// device's value, the field with the input and the unit after the value.
struct ComparedRow {
    QString name, label, field, unit;
};

// While a write waits, each row the device has not taken is marked and named with what the
// device reports instead, so that a refused value is seen at once rather than waited for.
// Returns the notes for `showWaitingNote`.
QStringList markRefusedRows(const Texts& texts, Form& form, std::span<const ComparedRow> rows,
                            const QStringList& differing, bool waiting);
