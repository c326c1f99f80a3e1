#pragma once

#include <QStringList>

class AppState;
class Form;
class QElapsedTimer;

// What a window says while a write waits for the device's read-back: the seconds since the
// write went out and the fields that still differ. `label` shows it while `waiting`, and
// goes empty and hidden otherwise.
void showWaitingNote(const AppState& state, Form& form, const QString& label, bool waiting,
                     const QElapsedTimer& sentAt, const QStringList& differing);
