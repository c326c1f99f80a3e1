#include "common/ui/formview.h"
#include "shell/appshell.h"
#include "shell/languages.h"
#include "shell/program.h"
#include "shell/ui/toolruntime.h"
#include "shell/ui/trayicon.h"
#include "support/fakes.h"

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

namespace {

// Elements that are state only: no widget shows them.
const QStringList kStateOnly = {
    QStringLiteral("frmMQ27D.trayIcon"),
    QStringLiteral("frmDisplay.cmdSettingsAssume"),
    QStringLiteral("frmDisplay.cmdSettingsCancel"),
};

// The named objects of a window: its widgets, actions and helpers, by objectName.
QStringList namedObjects(QWidget* window) {
    QStringList names;
    for (QObject* object : window->findChildren<QObject*>()) {
        const QString name = object->objectName();
        // Element names begin with a small letter; Qt names its own helpers "qt_...",
        // "_layout", "ScrollLeftButton".
        if (!name.isEmpty() && name.front().isLower() && !name.startsWith(QLatin1String("qt_")))
            names << name;
    }
    return names;
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

    // A widget under a name its window does not declare would never be reached, and a
    // declared element without a widget would never be seen.
    void widgetsAndDeclarationsAgree() {
        for (const QString& formName : runtime->windowNames()) {
            const Form& form = runtime->app().forms().get(formName);
            const QStringList named = namedObjects(runtime->window(formName));
            for (const QString& name : named)
                QVERIFY2(form.has(name),
                         qPrintable(formName + u'.' + name + QStringLiteral(" is not declared")));
            for (const QString& name : form.elementNames()) {
                const QString where = formName + u'.' + name;
                QVERIFY2(named.contains(name) || kStateOnly.contains(where),
                         qPrintable(where + QStringLiteral(" has no widget")));
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
            for (const QString& name : runtime->windowNames()) {
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
