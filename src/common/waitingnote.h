#pragma once

#include <QStringList>

class Form;
class Texts;
class QElapsedTimer;

// What a window says while a write waits for the device's read-back: the seconds since the
// write went out and the fields that still differ. `label` shows it while `waiting`, and
// goes empty and hidden otherwise.
void showWaitingNote(const Texts& texts, Form& form, const QString& label, bool waiting,
                     const QElapsedTimer& sentAt, const QStringList& differing);
