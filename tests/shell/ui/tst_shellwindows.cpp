#include "common/ui/formview.h"
#include "display/mainview_elements.h"
#include "files/devicefiles.h"
#include "search/devicesearch.h"
#include "shell/appshell.h"
#include "shell/dialog_elements.h"
#include "shell/languages.h"
#include "shell/program.h"
#include "shell/startwindow_elements.h"
#include "shell/ui/toolruntime.h"
#include "shell/ui/trayicon.h"
#include "support/fakes.h"
#include "support/testsupport.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QLabel>
#include <QLibraryInfo>
#include <QMainWindow>
#include <QMenu>
#include <QMessageBox>
#include <QSignalSpy>
#include <QTabWidget>
#include <QtTest>

#include <memory>

namespace {

// Elements that are state only: no widget shows them.
const QStringList kStateOnly = {
    QStringLiteral("frmMQ27D.trayIcon"),
};

// Elements of the main view that are state only: the fault bits without a place, the alarm
// images that no page places, headings that only the record prints, and the text that the
// status page's fault summary shows when nothing is pending.
bool isStateOnly(const QString& where) {
    static const QStringList mainView = [] {
        QStringList names;
        for (int bit : {10, 17, 18, 19, 20, 29})
            names << frmDisplay::picErr[bit] << frmDisplay::lblErr[bit];
        for (int i : {2, 3})
            names << frmDisplay::imgFireAlarm[i] << frmDisplay::imgActionAlarm[i];
        names << frmDisplay::lblSensorTempLegend[5] << frmDisplay::lblSensorTempAlarmLegend[5]
              << frmDisplay::lblErrNone;
        for (QString& name : names)
            name.prepend(QStringLiteral("frmDisplay."));
        return names;
    }();
    return kStateOnly.contains(where) || mainView.contains(where);
}

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

// What an assistive tool would announce without a name: visible controls, pictures and
// lamps under `node`.
QStringList unnamed(QAccessibleInterface* node) {
    QStringList found;
    if (node->state().invisible) return found;
    const bool announced = node->state().focusable || node->role() == QAccessible::Graphic;
    if (announced && node->text(QAccessible::Name).trimmed().isEmpty())
        found << node->object()->objectName() + u'(' + node->object()->metaObject()->className() +
                     u')';
    for (int i = 0; i < node->childCount(); ++i)
        found << unnamed(node->child(i));
    return found;
}

// The widgets that Tab visits, in the order it visits them.
QList<QWidget*> tabChain(QWidget* window) {
    QList<QWidget*> chain;
    for (QWidget* w = window->nextInFocusChain(); w != window; w = w->nextInFocusChain()) {
        if ((w->focusPolicy() & Qt::TabFocus) && w->isVisibleTo(window) && w->isEnabled())
            chain << w;
    }
    return chain;
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
                QVERIFY2(named.contains(name) || isStateOnly(where),
                         qPrintable(where + QStringLiteral(" has no widget")));
            }
        }
    }

    void startShowsTheStartWindowInItsLanguage() {
        runtime->start(QString());
        auto* start = qobject_cast<QMainWindow*>(runtime->window(frmMQ27D::kName));
        QVERIFY(start->isVisible());
        QCOMPARE(start->windowTitle(), runtime->app().forms().frmMQ27D().title());
        QVERIFY(start->windowTitle().startsWith(QStringLiteral("ORVANIS SHEL·LIX - V")));
        QCOMPARE(start->findChild<QMenu*>(QStringLiteral("mnuFile"))->title(),
                 QStringLiteral("Datei"));
        QCOMPARE(start->findChild<QLabel*>(QStringLiteral("lblReceive"))->text(),
                 QStringLiteral("Empfang"));
        QVERIFY(!start->findChild<QWidget*>(QStringLiteral("fraComSend"))->isVisible());
        QVERIFY(!runtime->window(frmDisplay::kName)->isVisible());
        QVERIFY(port.isOpen());
    }

    void aboutIsModalWithoutALoopOfItsOwn() {
        runtime->start(QString());
        QWidget* start = runtime->window(frmMQ27D::kName);
        start->findChild<QAction*>(QStringLiteral("mnuInfo"))->trigger();
        QWidget* about = runtime->window(frmAbout::kName);
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
        runtime->window(frmMQ27D::kName)
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
        QVERIFY(runtime->app().shell().TrayIconAdded());
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

    // Screen readers and desktop automation find every control by a name, and Tab goes
    // through a window as it reads: down, and left to right within a row.
    void windowsAreNamedForAssistiveToolsAndTabInReadingOrder() {
        runtime->start(QString());
        Program& app = runtime->app();
        app.forms().frmMQ27D().setBackColor(frmMQ27D::picReceive, colors::kGreen);
        auto* leds = runtime->window(frmMQ27D::kName)->findChild<QWidget*>(frmMQ27D::picReceive);
        QCOMPARE(leds->accessibleName(), QStringLiteral("Empfang / Senden"));
        QCOMPARE(leds->accessibleDescription(), QStringLiteral("Empfang"));
        auto* port =
            runtime->window(frmInterface::kName)->findChild<QWidget*>(frmInterface::cboPort);
        QCOMPARE(QAccessible::queryAccessibleInterface(port)->text(QAccessible::Name),
                 app.forms().frmInterface().caption(frmInterface::lblCOMPort));

        app.search().mnuDeviceSearch_Click();
        for (const QString& name :
             {frmMQ27D::kName, frmInterface::kName, frmLanguage::kName, frmAbout::kName,
              frmConnect::kName, frmDeviceSearch::kName, frmDeviceSettings::kName,
              frmExtinguishDetails::kName, frmExtinguishSettings::kName, frmLocalizeLearn::kName}) {
            QWidget* window = runtime->window(name);
            window->show();
            QVERIFY(QTest::qWaitForWindowExposed(window));
            const QStringList missing = unnamed(QAccessible::queryAccessibleInterface(window));
            QVERIFY2(missing.isEmpty(),
                     qPrintable(name + QStringLiteral(": ") + missing.join(u", ")));
            const QList<QWidget*> chain = tabChain(window);
            for (qsizetype i = 1; i < chain.size(); ++i) {
                const QRect a(chain[i - 1]->mapTo(window, QPoint()), chain[i - 1]->size());
                const QRect b(chain[i]->mapTo(window, QPoint()), chain[i]->size());
                const bool below = b.top() > a.bottom();
                const bool rightInRow = b.top() <= a.bottom() && b.left() > a.right();
                QVERIFY2(below || rightInRow,
                         qPrintable(name + QStringLiteral(": ") + chain[i]->objectName() +
                                    QStringLiteral(" after ") + chain[i - 1]->objectName()));
            }
        }
    }

    // Every page of the main view, with a device's read-out on it: every control, lamp and
    // instrument is named after its legend.
    void mainViewIsNamedForAssistiveTools() {
        runtime->start(QString());
        runtime->app().files().LoadDeviceFile(
            testsupport::sourcePath(QStringLiteral("samples/full.ko3")));
        QWidget* window = runtime->window(frmDisplay::kName);
        QVERIFY(QTest::qWaitForWindowExposed(window));
        auto* tabs = window->findChild<QTabWidget*>(frmDisplay::tabDisplay.whole());
        for (int page = 0; page < tabs->count(); ++page) {
            if (!tabs->isTabVisible(page)) continue;
            tabs->setCurrentIndex(page);
            const QStringList missing = unnamed(QAccessible::queryAccessibleInterface(window));
            QVERIFY2(missing.isEmpty(),
                     qPrintable(tabs->tabText(page) + QStringLiteral(": ") + missing.join(u", ")));
        }
        auto* smoke = window->findChild<QWidget*>(frmDisplay::lblSmokeLevel[1]);
        QCOMPARE(smoke->accessibleName(), QStringLiteral("Rauchpegel 2"));
        QVERIFY(smoke->accessibleDescription().endsWith(QStringLiteral(" %/m")));
        auto* box = window->findChild<QWidget*>(frmDisplay::picErr[2]);
        QCOMPARE(box->accessibleDescription(), QStringLiteral("Meldung liegt an"));
        // The keyboard reaches the pages and the buttons on them by their letters.
        QCoreApplication::processEvents();
        QVERIFY(tabs->tabText(0).contains(u'&'));
        QVERIFY(
            window->findChild<QAbstractButton*>(frmDisplay::cmdErrReset)->text().contains(u'&'));
    }

    // Qt's own texts (message box buttons, file dialogs) follow the tool's language.
    void qtTextsFollowTheLanguage() {
        const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
        if (!QFile::exists(folder + QStringLiteral("/qtbase_de.qm")))
            QSKIP("Qt's translations are not installed");
        auto yesNo = [] {
            QMessageBox box;
            box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
            return box.button(QMessageBox::Yes)->text() + u'/' +
                   box.button(QMessageBox::No)->text();
        };
        Languages& languages = runtime->app().languages();
        languages.SwitchToLanguage(1);
        QCOMPARE(yesNo(), QStringLiteral("&Ja/&Nein"));
        languages.SwitchToLanguage(3);
        QCOMPARE(yesNo(), QStringLiteral("&Oui/&Non"));
        languages.SwitchToLanguage(2);
        QCOMPARE(yesNo(), QStringLiteral("&Yes/&No"));
        languages.SwitchToLanguage(4);
        runtime.reset();
        QCOMPARE(yesNo(), QStringLiteral("&Yes/&No"));
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
#include "devicesettings/devicesettings_elements.h"
#include "extinguish/extinguish_elements.h"
#include "localize/localize_elements.h"
#include "search/search_elements.h"
#include "tst_shellwindows.moc"
