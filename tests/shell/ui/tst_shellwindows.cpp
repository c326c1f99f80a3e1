#include "common/ui/formview.h"
#include "display/mainview_elements.h"
#include "shell/appshell.h"
#include "shell/dialog_elements.h"
#include "shell/languages.h"
#include "shell/program.h"
#include "shell/startwindow_elements.h"
#include "shell/ui/toolruntime.h"
#include "shell/ui/trayicon.h"
#include "support/fakes.h"

#include <QAbstractButton>
#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QLibraryInfo>
#include <QLineEdit>
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

// Fields of one frame that stand above one another but not in one column.
QStringList misalignedFields(QWidget* window) {
    QStringList misaligned;
    QMultiHash<QWidget*, QRect> placed;
    for (QLineEdit* field : window->findChildren<QLineEdit*>()) {
        QWidget* frame = field->parentWidget();
        while (frame && !qobject_cast<QGroupBox*>(frame))
            frame = frame->parentWidget();
        if (!frame || !field->isVisibleTo(window)) continue;
        const QRect spot(field->mapTo(frame, QPoint()), QSize(field->width(), 1));
        for (const QRect& other : placed.values(frame))
            if (other.left() <= spot.right() && spot.left() <= other.right() &&
                other.right() != spot.right())
                misaligned << field->objectName();
        placed.insert(frame, spot);
    }
    return misaligned;
}

} // namespace

class TestShellWindows : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        settings.values.insert(QStringLiteral("Port"), QStringLiteral("1"));
        runtime = std::make_unique<ToolRuntime>(ToolRuntime::Options{
            &dialogs, &settings, &port, &launcher, folder.path(), folder.path(), false});
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

    // About is modal without a loop of its own; closing from the menu ends the tool with
    // every window hidden and the port closed.
    void aboutAndClose() {
        runtime->start(QString());
        QWidget* start = runtime->window(frmMQ27D::kName);
        QVERIFY(start->isVisible() && port.isOpen());
        start->findChild<QAction*>(QStringLiteral("mnuInfo"))->trigger();
        QWidget* about = runtime->window(frmAbout::kName);
        QVERIFY(about->isVisible());
        QCOMPARE(about->windowModality(), Qt::ApplicationModal);
        QTest::keyClick(about, Qt::Key_Escape);
        QVERIFY(!about->isVisible());

        QSignalSpy finished(runtime.get(), &ToolRuntime::finished);
        start->findChild<QAction*>(QStringLiteral("mnuCloseApp"))->trigger();
        QCOMPARE(finished.count(), 1);
        for (QWidget* w : QApplication::topLevelWidgets())
            QVERIFY2(!w->isVisible(), qPrintable(w->objectName()));
        QVERIFY(!port.isOpen());
    }

    // Without a notification area the icon is harmless; its picture follows the index,
    // clamped to the four pictures.
    void trayIcon() {
        QTest::failOnWarning(QRegularExpression(QStringLiteral("(?i)tray")));
        QVERIFY(!QSystemTrayIcon::isSystemTrayAvailable());
        runtime->start(QString());
        Form& start = runtime->app().forms().frmMQ27D();
        QVERIFY(runtime->app().shell().TrayIconAdded());
        const QList<QPair<double, int>> cases = {{0, 0}, {1, 1},  {2, 2},    {3, 3},
                                                 {7, 3}, {-1, 0}, {1e300, 3}};
        for (const auto& [value, state] : cases) {
            start.setValue(QStringLiteral("trayIcon"), value);
            QCOMPARE(runtime->trayIcon().state(), state);
        }
        QVERIFY(!runtime->trayIcon().systemIcon());
        runtime->app().shell().TrayIconRemove();
        QVERIFY(!runtime->trayIcon().systemIcon());
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

    // Every window, each page of the main view and its settings pages with their fields open,
    // in every language: no text cut, the fields of a frame in one column, and the window no
    // larger than a laptop's screen (1366 x 768, less a panel and the title bar; a larger
    // scale shrinks the screen and the window alike).
    void longTextsFitInEveryLanguage() {
        runtime->start(QString());
        Program& app = runtime->app();
        app.shell().ShowInterface();
        app.shell().ShowLanguage();
        app.forms().frmAbout().show(false);
        for (const auto& open : {frmDisplay::cmdSettings, frmDisplay::cmdAirFlowSet,
                                 frmDisplay::cmdSensorTempAlarmSet})
            app.forms().frmDisplay().click(open);
        for (int language = 1; language <= 4; ++language) {
            app.languages().SwitchToLanguage(language);
            for (const QString& name : runtime->windowNames()) {
                QWidget* window = runtime->window(name);
                window->show();
                window->adjustSize();
                const QSize least = window->minimumSizeHint();
                QVERIFY2(least.width() <= 1366 && least.height() <= 768 - 80,
                         qPrintable(QStringLiteral("%1 in language %2 needs %3 x %4")
                                        .arg(name)
                                        .arg(language)
                                        .arg(least.width())
                                        .arg(least.height())));
                auto* tabs = window->findChild<QTabWidget*>();
                for (int page = 0; page < (tabs ? tabs->count() : 1); ++page) {
                    if (tabs) tabs->setCurrentIndex(page);
                    // A page's layout settles over a few rounds: its own, the scroll
                    // area's, the frames'.
                    for (int round = 0; round < 4; ++round)
                        QCoreApplication::processEvents();
                    const QStringList faults = clippedTexts(window) + misalignedFields(window);
                    QVERIFY2(faults.isEmpty(), qPrintable(QStringLiteral("%1 in language %2: %3")
                                                              .arg(name)
                                                              .arg(language)
                                                              .arg(faults.join(u", "))));
                }
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
