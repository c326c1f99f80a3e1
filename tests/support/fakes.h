#pragma once

#include "common/lifetime.h"
#include "common/platformservices.h"
#include "common/preferences.h"
#include "common/regsettings.h"
#include "common/texts.h"
#include "link/devicesession.h"
#include "link/recognition.h"
#include "link/seriallink.h"
#include "link/serialport.h"
#include "shell/allforms.h"
#include "shell/linewindows.h"
#include "shell/program.h"
#include "values/devicevalues.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QTemporaryDir>

#include <deque>
#include <memory>

// Stand-ins for the outside world, for tests of the logic without a display or a port.

// A serial port whose ports 1 to 16 exist as the test says and whose line the test writes.
class FakeSerialPort : public SerialPortDevice {
public:
    QSet<int> available{1, 2, 3};
    QList<QByteArray> written;
    QByteArray incoming;
    // What an absent port and a pulled adapter report.
    PortOpenFailure failure =
        PortOpenFailure::of(PortOpenFailure::Kind::NoDevice, QStringLiteral("/dev/ttyUSB7"));

    bool open(int portNumber) override;
    void close() override { m_open = false; }
    bool isOpen() const override { return m_open; }
    int portNumber() const override { return m_portNumber; }
    QByteArray readAll() override;
    void write(const QByteArray& data) override { written << data; }
    QString deviceName(int portNumber) const override;
    PortOpenFailure openFailure() const override { return m_open ? PortOpenFailure{} : failure; }

    // Bytes arrive from the device.
    void deliver(const QByteArray& bytes);
    // The adapter is pulled.
    void pull();

private:
    bool m_open = false;
    int m_portNumber = 0;
};

// Message boxes and file dialogs that answer from a script and remember what they showed.
class ScriptedDialogs : public UserDialogs {
public:
    struct Shown {
        QString text;
        QString title;
        Buttons buttons;
        Icon icon;
        Answer defaultAnswer;
    };
    QList<Shown> shown;
    std::deque<Answer> answers; // taken in turn; when empty, the default button answers
    std::optional<QString> saveName;
    std::optional<QString> openName;
    QString lastFilter;

    Answer messageBox(const QString& text, const QString& title, Buttons buttons, Icon icon,
                      Answer defaultAnswer) override;
    std::optional<QString> saveFileName(const QString& initialName, const QString& filter) override;
    std::optional<QString> openFileName(const QString& filter,
                                        const QString& defaultSuffix) override;
};

class FakeLauncher : public ProcessLauncher {
public:
    struct Start {
        QString program;
        QStringList arguments;
    };
    QList<Start> started;
    bool startSucceeds = true;
    QHash<QString, QString> onPath; // program name -> full path

    bool startDetached(const QString& program, const QStringList& arguments) override;
    QString findExecutable(const QString& name) const override { return onPath.value(name); }
    QStringList openedFolders;
    bool openFolder(const QString& path) override {
        openedFolders << path;
        return startSucceeds;
    }
    QStringList openedDocuments;
    bool openDocument(const QString& path) override {
        openedDocuments << path;
        return startSucceeds;
    }
};

class FixedClock : public Clock {
public:
    QDateTime time{QDate(2026, 11, 23), QTime(9, 30, 15)};
    QDateTime now() const override { return time; }
};

// The outside world of one test, faked, with its program and data folders in a temporary
// folder.
struct FakeWorld {
    FakeWorld();

    FakeSerialPort port;
    ScriptedDialogs dialogs;
    FakeLauncher launcher;
    MemorySettings settings;
    FixedClock clock;
    QTemporaryDir folder;

    Services services();
    QString programDir() const;
    QString dataDir() const;
    // The suite program beside the tool, for a hand-over that finds it.
    QString suitePath() const;
    void installSuite() const;
};

// The whole program on fakes.
struct TestApp : FakeWorld {
    TestApp();
    ~TestApp();

    std::unique_ptr<Program> app;
};

// The telegram `command` as the value store holds it, empty before the store exists.
Bytes stored(Program& app, int command);

// The telegram link alone on fakes, with the two windows that show it: a test of the link
// builds nothing else.
struct LinkRig : FakeWorld {
    LinkRig();

    AllForms forms;
    Preferences preferences;
    Texts texts{preferences};
    RegSettings regSettings;
    Lifetime life;
    DeviceSession session;
    DeviceValues values;
    SerialLink link;
    Recognition recognition;
    StartWindow startWindow;
    PortWindow portWindow;
};
