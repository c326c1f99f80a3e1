#include "common/ui/artwork.h"
#include "common/ui/formview.h"
#include "shell/appshell.h"
#include "shell/languages.h"
#include "shell/program.h"
#include "shell/ui/toolruntime.h"
#include "shell/ui/trayicon.h"
#include "support/fakes.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QSignalSpy>
#include <QTabWidget>
#include <QtTest>

#include <memory>

namespace {

// The elements of each window that the logic reads or writes.
const QHash<QString, QStringList>& elementsByWindow() {
    static const QHash<QString, QStringList> elements = {
        {formname::frmMQ27D,
         {"mnuFile",      "mnuLoad",     "mnuSep1",       "mnuCloseApp",   "mnuSettings",
          "mnuInterface", "mnuLanguage", "mnuHelp",       "mnuInfo",       "picHALVORN",
          "lblAppName",   "picReceive",  "lblReceive",    "lblSend",       "lblDevice",
          "fraComSend",   "txtComSend",  "chkSendEnable", "fraComReceive", "txtComReceive"}},
        {formname::frmInterface, {"lblCOMPort", "cboPort", "cmdOKButton", "cmdCancelButton"}},
        {formname::frmLanguage,
         {"optLanguage_0", "optLanguage_1", "optLanguage_2", "optLanguage_3", "optLanguage_4",
          "imgFlag_1", "imgFlag_2", "imgFlag_3", "imgFlag_4", "cmdOK"}},
        {formname::frmAbout,
         {"lblKompaVersion", "lblDisplay", "lblCopyright_0", "lblCopyright_1", "cmdOK"}},
    };
    return elements;
}

// Texts cut short by their layout: a label or button narrower than its text needs.
QStringList clippedTexts(QWidget* window) {
    QStringList clipped;
    const auto widgets = window->findChildren<QWidget*>();
    for (QWidget* w : widgets) {
        if (!w->isVisibleTo(window) || w->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored)
            continue;
        QString text;
        if (auto* label = qobject_cast<QLabel*>(w)) text = label->text();
        if (auto* button = qobject_cast<QAbstractButton*>(w)) text = button->text();
        if (!text.isEmpty() && w->width() < w->minimumSizeHint().width())
            clipped << w->objectName() + QStringLiteral(": ") + text;
    }
    return clipped;
}

} // namespace

class TestShellWindows : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        settings.values.insert(QStringLiteral("Port"), QStringLiteral("1"));
        ToolRuntime::Options options;
        options.port = &port;
        options.dialogs = &dialogs;
        options.settings = &settings;
        options.launcher = &launcher;
        options.programDir = folder.path();
        options.dataDir = folder.path();
        options.exitEventLoop = false;
        runtime = std::make_unique<ToolRuntime>(options);
    }
    void cleanup() {
        runtime.reset();
        settings.values.clear();
    }

    void everyElementHasItsWidget() {
        for (auto it = elementsByWindow().cbegin(); it != elementsByWindow().cend(); ++it) {
            QWidget* window = runtime->window(it.key());
            QVERIFY2(window, qPrintable(it.key()));
            for (const QString& name : it.value()) {
                QObject* found = window->findChild<QObject*>(name);
                QVERIFY2(found, qPrintable(it.key() + u' ' + name));
            }
        }
    }

    void startShowsTheStartWindowInItsLanguage() {
        runtime->start(QString());
        auto* start = qobject_cast<QMainWindow*>(runtime->window(formname::frmMQ27D));
        QVERIFY(start->isVisible());
        QCOMPARE(start->windowTitle(), runtime->app().forms().frmMQ27D().title());
        QVERIFY(start->windowTitle().startsWith(QStringLiteral("ORVANIS SHEL·LIX - V")));
        QCOMPARE(start->findChild<QMenu*>(QStringLiteral("mnuFile"))->title(),
                 QStringLiteral("Datei"));
        QCOMPARE(start->findChild<QLabel*>(QStringLiteral("lblReceive"))->text(),
                 QStringLiteral("Empfang"));
        QVERIFY(!start->findChild<QWidget*>(QStringLiteral("fraComSend"))->isVisible());
        QVERIFY(!runtime->window(formname::frmDisplay)->isVisible());
        QVERIFY(port.isOpen());
    }

    void aboutIsModalWithoutALoopOfItsOwn() {
        runtime->start(QString());
        QWidget* start = runtime->window(formname::frmMQ27D);
        start->findChild<QAction*>(QStringLiteral("mnuInfo"))->trigger();
        QWidget* about = runtime->window(formname::frmAbout);
        QVERIFY(about->isVisible());
        QCOMPARE(about->windowModality(), Qt::ApplicationModal);
        QVERIFY(about->findChild<QLabel*>(QStringLiteral("lblKompaVersion"))
                    ->text()
                    .startsWith(QStringLiteral("Diagnoseprogramm KOMPA 3")));
        QTest::keyClick(about, Qt::Key_Escape);
        QVERIFY(!about->isVisible());
    }

    void closingFromTheMenuEndsTheTool() {
        runtime->start(QString());
        QSignalSpy finished(runtime.get(), &ToolRuntime::finished);
        runtime->window(formname::frmMQ27D)
            ->findChild<QAction*>(QStringLiteral("mnuCloseApp"))
            ->trigger();
        QCOMPARE(finished.count(), 1);
        const auto windows = QApplication::topLevelWidgets();
        for (QWidget* w : windows)
            QVERIFY2(!w->isVisible(), qPrintable(w->objectName()));
        QVERIFY(!port.isOpen());
    }

    void trayIconWithoutNotificationAreaIsHarmless() {
        QTest::failOnWarning(QRegularExpression(QStringLiteral("(?i)tray")));
        QVERIFY(!QSystemTrayIcon::isSystemTrayAvailable());
        runtime->start(QString());
        Form& start = runtime->app().forms().frmMQ27D();
        QVERIFY(runtime->app().shell().trayIconAdded());
        for (double value : {1.0, 2.0, 3.0, 0.0})
            start.setValue(QStringLiteral("trayIcon"), value);
        QVERIFY(!runtime->trayIcon().systemIcon());
        runtime->app().shell().TrayIconRemove();
        QVERIFY(!runtime->trayIcon().systemIcon());
    }

    void trayPictureFollowsTheIconIndex() {
        Form& start = runtime->app().forms().frmMQ27D();
        const QList<QPair<double, int>> cases = {{0, 0}, {1, 1},  {2, 2},    {3, 3},
                                                 {7, 3}, {-1, 0}, {1e300, 3}};
        for (const auto& [value, state] : cases) {
            start.setValue(QStringLiteral("trayIcon"), value);
            QCOMPARE(runtime->trayIcon().state(), state);
        }
    }

    void longTextsFitInEveryLanguage() {
        runtime->start(QString());
        Program& app = runtime->app();
        app.shell().ShowInterface();
        app.shell().ShowLanguage();
        app.forms().frmAbout().show(false);
        for (int language = 1; language <= 4; ++language) {
            app.languages().SwitchToLanguage(language);
            for (const QString& name : elementsByWindow().keys()) {
                QWidget* window = runtime->window(name);
                window->show();
                window->adjustSize();
                QCoreApplication::processEvents();
                const QStringList clipped = clippedTexts(window);
                QVERIFY2(clipped.isEmpty(), qPrintable(QStringLiteral("%1 in language %2: %3")
                                                           .arg(name)
                                                           .arg(language)
                                                           .arg(clipped.join(u", "))));
            }
        }
    }

    // With MQ27_GRAB_DIR set, every window as a picture in German and English, to look at.
    void picturesOfTheWindows() {
        const QString folder = qEnvironmentVariable("MQ27_GRAB_DIR");
        if (folder.isEmpty()) QSKIP("MQ27_GRAB_DIR not set");
        runtime->start(QString());
        Program& app = runtime->app();
        Form& start = app.forms().frmMQ27D();
        start.setCaption(QStringLiteral("lblDevice"), QStringLiteral("MQ27D  Serien Nr. 1001"));
        start.setBackColor(QStringLiteral("picReceive"), colors::kGreen);
        start.setForeColor(QStringLiteral("picReceive"), colors::kRed);
        app.shell().ShowInterface();
        app.shell().ShowLanguage();
        app.forms().frmAbout().show(false);
        Form& search = app.forms().frmDeviceSearch();
        search.setItems(QStringLiteral("lstDeviceList"), {"1001", "2002", "30417"});
        search.setBackColor(QStringLiteral("picDataLED"), colors::kGreen);
        search.show(false);
        app.forms().frmConnect().setTitle(QStringLiteral("ORVANIS SHEL·LIX - 1001"));
        app.forms().frmConnect().show(false);
        Form& view = app.forms().frmDisplay();
        for (int i = 0; i < 8; ++i) {
            view.setCaption(Form::indexed(u"lblSerialNo", i), QStringLiteral("1001"));
            view.setBackColor(Form::indexed(u"picReceiveLED", i),
                              i % 2 ? colors::kWindowBackground : colors::kGreen);
        }
        view.setTitle(QStringLiteral("ORVANIS SHEL·LIX - [23.11.2026 09:30:15]"));
        view.show(false);
        for (int state = 0; state < 4; ++state) {
            for (int side : {16, 64})
                QVERIFY(
                    artwork::deviceIcon(state, side)
                        .save(
                            QStringLiteral("%1/tray-%2-%3.png").arg(folder).arg(state).arg(side)));
        }
        for (int language = 1; language <= 4; ++language) {
            app.languages().SwitchToLanguage(language);
            QCoreApplication::processEvents();
            for (const QString& name : runtime->windowNames()) {
                QWidget* window = runtime->window(name);
                const QString file = QStringLiteral("%1/%2-%3.png").arg(folder, name).arg(language);
                QVERIFY(window->grab().save(file));
            }
        }
    }

private:
    FakeSerialPort port;
    ScriptedDialogs dialogs;
    MemorySettings settings;
    FakeLauncher launcher;
    QTemporaryDir folder;
    std::unique_ptr<ToolRuntime> runtime;
};

QTEST_MAIN(TestShellWindows)
#include "tst_shellwindows.moc"
