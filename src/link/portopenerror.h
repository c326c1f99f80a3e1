#pragma once

#include "common/preferences.h"

#include <QSerialPort>
#include <QString>

// Why a serial port did not open, in terms a user can act on.
struct PortOpenFailure {
    enum class Kind { None, NoDevice, Permission, Busy, Other };

    Kind kind = Kind::None;
    QString path;          // the device as the user chose it; empty when the port number has none
    int portNumber = 0;    // for a port number without a device
    QString group;         // Permission: the group that owns the device
    QString user;          // Permission: who runs the tool
    QString holder;        // Busy: "minicom (process 4711)" where the system tells, else empty
    QString systemText;    // Other: QSerialPort's own text
    bool vanished = false; // the port was open and went away

    bool failed() const { return kind != Kind::None; }
    static PortOpenFailure of(Kind kind, const QString& path) {
        PortOpenFailure failure;
        failure.kind = kind;
        failure.path = path;
        return failure;
    }
};

// Looks at the device behind a failed open: whether it exists, whether this user may open
// it, and who holds it (a serial lock file or an open file of a process of this user).
PortOpenFailure diagnosePortOpen(const QString& path, QSerialPort::SerialPortError error,
                                 const QString& systemText);

// The reason in plain words in `language`; empty
// when nothing failed. The tool and the command line print the same sentence.
QString describePortOpenError(const PortOpenFailure& failure, Language language);

// The one command that gives `user` access to devices of `group`.
QString permissionFixCommand(const QString& group, const QString& user);
