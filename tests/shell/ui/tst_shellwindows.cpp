#include "common/colors.h"
#include "display/mainview_elements.h"
#include "display/ui/frmdisplay.h"
#include "engine/pollengine.h"
#include "files/devicefiles.h"
#include "search/devicesearch.h"
#include "shell/appshell.h"
#include "shell/dialog_elements.h"
#include "shell/languages.h"
#include "shell/program.h"
#include "shell/startwindow_elements.h"
#include "shell/ui/toolruntime.h"
#include "shell/ui/trayicon.h"
#include "support/livetool.h"
#include "support/mainviewrig.h"
#include "support/testsupport.h"
#include "values/valuestore.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QtTest>

#include <memory>

namespace el = frmDisplay;

namespace {

// Elements that are state only, shown by no widget: the tray icon's picture, and in the main
// view the fault bits without a place, the alarm images that no page places, headings that
// only the record prints, and the text that the status page's fault summary shows when
// nothing is pending.
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
    return where == u"frmMQ27D.trayIcon" || mainView.contains(where);
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

// What a widget shows as its caption, without the mnemonic marks.
QString caption(const QObject* object) {
    QString text;
    if (!object) return text;
    if (auto* button = qobject_cast<const QAbstractButton*>(object)) text = button->text();
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) == u'&' && ++i == text.size()) break;
        plain += text.at(i);
    }
    return plain;
}

bool isPushButton(const QObject* object) {
    return qobject_cast<const QAbstractButton*>(object) &&
           !qobject_cast<const QCheckBox*>(object) && !qobject_cast<const QRadioButton*>(object);
}

// What an assistive tool reads of the shown part of `node`: every control, picture and
// indicator named, and a name that begins with the caption the eye reads.
void readAloud(QAccessibleInterface* node, QStringList& faults) {
    if (node->state().invisible) return;
    const QAccessible::Role role = node->role();
    const bool announced = (node->state().focusable && role != QAccessible::StaticText) ||
                           role == QAccessible::Graphic || role == QAccessible::Indicator ||
                           role == QAccessible::PushButton || role == QAccessible::Button;
    const QString name = node->text(QAccessible::Name);
    const QObject* object = node->object(); // none for a tab or a row of a list
    const QString what = object ? object->objectName() + u'(' + object->metaObject()->className() +
                                      QStringLiteral("): ")
                                : name + QStringLiteral(": ");
    if (announced && name.trimmed().isEmpty()) faults << what + QStringLiteral("no name");
    const QString shown = caption(node->object());
    if (!shown.isEmpty() && !name.startsWith(shown))
        faults << what + QStringLiteral("\"%1\" hides \"%2\"").arg(name, shown);
    for (int i = 0; i < node->childCount(); ++i)
        readAloud(node->child(i), faults);
}

// Two buttons of one window that are told apart neither by name nor by description, and
// buttons with a caption but without a key.
void buttons(QWidget* window, QStringList& faults) {
    QHash<QString, QString> seen;
    for (QAbstractButton* button : window->findChildren<QAbstractButton*>()) {
        if (!isPushButton(button)) continue;
        if (!caption(button).isEmpty() && QKeySequence::mnemonic(button->text()).isEmpty())
            faults << button->objectName() + QStringLiteral(": no key");
        QAccessibleInterface* face = QAccessible::queryAccessibleInterface(button);
        const QString key =
            face->text(QAccessible::Name) + u'|' + face->text(QAccessible::Description);
        if (seen.contains(key))
            faults << QStringLiteral("%1 and %2 both \"%3\"")
                          .arg(seen[key], button->objectName(), key);
        seen.insert(key, button->objectName());
    }
}

// Every stop of the Tab chain is seen and shows that it has the focus, and Tab goes through
// a window as it reads: down, and left to right within a row.
void tabStops(QWidget* window, QStringList& faults) {
    window->setAttribute(Qt::WA_KeyboardFocusChange);
    QList<QWidget*> chain;
    for (QWidget* w = window->nextInFocusChain(); w != window; w = w->nextInFocusChain())
        if ((w->focusPolicy() & Qt::TabFocus) && w->isVisibleTo(window) && w->isEnabled())
            chain << w;
    QRect before;
    for (QWidget* w : chain) {
        const QRect place(w->mapTo(window, QPoint()), w->size());
        if (!before.isNull() && place.top() <= before.bottom() && place.left() <= before.right())
            faults << w->objectName() + QStringLiteral(": out of reading order");
        before = place;
        if (w->width() < 2 || w->height() < 2)
            faults << w->objectName() + QStringLiteral(": unseen");
        if (QWidget* focus = QApplication::focusWidget()) focus->clearFocus();
        const QImage without = w->grab().toImage();
        w->setFocus(Qt::TabFocusReason);
        if (w->grab().toImage() == without)
            faults << w->objectName() + u'(' + w->metaObject()->className() +
                          QStringLiteral("): shows no focus");
    }
}

} // namespace

class TestShellWindows : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        rig = std::make_unique<LiveTool>();
        runtime = &rig->runtime();
    }
    void cleanup() { rig.reset(); }

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
        QVERIFY(start->isVisible() && rig->port.isOpen());
        start->findChild<QAction*>(QStringLiteral("mnuInfo"))->trigger();
        QWidget* about = runtime->window(frmAbout::kName);
        QVERIFY(about->isVisible());
        QCOMPARE(about->windowModality(), Qt::ApplicationModal);
        QTest::keyClick(about, Qt::Key_Escape);
        QVERIFY(!about->isVisible());

        QSignalSpy finished(runtime, &ToolRuntime::finished);
        start->findChild<QAction*>(QStringLiteral("mnuCloseApp"))->trigger();
        QCOMPARE(finished.count(), 1);
        for (QWidget* w : QApplication::topLevelWidgets())
            QVERIFY2(!w->isVisible(), qPrintable(w->objectName()));
        QVERIFY(!rig->port.isOpen());
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
        const QList<QPair<int, QString>> cases = {
            {1, "&Ja/&Nein"}, {3, "&Oui/&Non"}, {2, "&Yes/&No"}};
        for (const auto& [language, texts] : cases) {
            runtime->app().languages().SwitchToLanguage(language);
            QCOMPARE(yesNo(), texts);
        }
        // The tool's translator leaves with it.
        runtime->app().languages().SwitchToLanguage(4);
        rig->end();
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

    void everyWindowReadsAsItLooks_data() {
        QTest::addColumn<int>("language");
        QTest::newRow("German") << 1;
        QTest::newRow("English") << 2;
    }

    // Each window, each page of the main view, and the settings pages while they are edited:
    // what a screen reader says is what the eye reads, and the keyboard sees where it is.
    void everyWindowReadsAsItLooks() {
        QFETCH(int, language);
        runtime->start(QString());
        Program& app = runtime->app();
        app.files().LoadDeviceFile(testsupport::sourcePath(QStringLiteral("samples/full.ko3")));
        app.languages().SwitchToLanguage(language);
        app.search().mnuDeviceSearch_Click();
        QWidget* main = runtime->window(el::kName);
        for (const QString& edit : {QString(el::cmdSettings), QString(el::cmdAirFlowSet)})
            main->findChild<QAbstractButton*>(edit)->click();
        for (const QString& name : runtime->windowNames()) {
            QWidget* window = runtime->window(name);
            window->show();
            window->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(window));
            QCoreApplication::processEvents(); // the mnemonics, shared out after the captions
            QStringList faults;
            buttons(window, faults);
            auto* tabs = window->findChild<QTabWidget*>();
            for (int page = 0; page < (tabs ? tabs->count() : 1); ++page) {
                if (tabs && !tabs->isTabVisible(page)) continue;
                if (tabs) tabs->setCurrentIndex(page);
                readAloud(QAccessible::queryAccessibleInterface(window), faults);
                tabStops(window, faults);
            }
            QVERIFY2(faults.isEmpty(), qPrintable(name + QStringLiteral(":\n  ") +
                                                  faults.join(QStringLiteral("\n  "))));
        }
    }

    // Lamps, fields and instruments are named after their legends, and say what they show.
    void namesFollowTheLegends() {
        runtime->start(QString());
        Program& app = runtime->app();
        app.files().LoadDeviceFile(testsupport::sourcePath(QStringLiteral("samples/full.ko3")));
        app.forms().frmMQ27D().setBackColor(frmMQ27D::picReceive, colors::kGreen);
        auto* leds = runtime->window(frmMQ27D::kName)->findChild<QWidget*>(frmMQ27D::picReceive);
        QCOMPARE(leds->accessibleName(), "Empfang / Senden");
        QCOMPARE(leds->accessibleDescription(), "Empfang: an, Senden: aus");
        auto* port =
            runtime->window(frmInterface::kName)->findChild<QWidget*>(frmInterface::cboPort);
        QCOMPARE(QAccessible::queryAccessibleInterface(port)->text(QAccessible::Name),
                 app.forms().frmInterface().caption(frmInterface::lblCOMPort));
        QWidget* main = runtime->window(el::kName);
        auto* smoke = main->findChild<QWidget*>(el::lblSmokeLevel[1]);
        QCOMPARE(smoke->accessibleName(), "Rauchpegel 2");
        QVERIFY(smoke->accessibleDescription().endsWith(" %/m"));
        QCOMPARE(main->findChild<QWidget*>(el::picErr[2])->accessibleDescription(),
                 "Meldung liegt an");
    }

    // Dictation, voice control and desktop automation set a field's text as a program does;
    // what the field then shows is what the device gets.
    void aFieldSetByAssistiveToolsIsWritten() {
        MainViewRig rig;
        frmDisplayWindow window(rig.view(), [&rig](int index) { return rig.app->str(index); });
        window.show();
        window.findChild<QTabWidget*>()->setCurrentIndex(3); // the settings
        window.findChild<QAbstractButton*>(el::cmdSettings)->click();
        auto* field = window.findChild<QLineEdit*>(el::txtAlarmDelay);
        QVERIFY(field->isVisible());
        QAccessibleInterface* face = QAccessible::queryAccessibleInterface(field);
        face->editableTextInterface()->replaceText(0, int(field->text().size()),
                                                   QStringLiteral("20"));
        QCOMPARE(field->text(), QStringLiteral("20"));
        window.findChild<QAbstractButton*>(el::cmdSettingsAssume)->click();
        QVERIFY(rig.app->engine().IsWriteQueued());
        QCOMPARE(rig.app->values()->GetDeviceParameter().at(22), 20); // the alarm delay in s
    }

    // In every language each menu opens by Alt and its letter, and within a menu every entry
    // has a letter of its own; then the language window and the help, by keys alone.
    void commandsByKeyboard() {
        runtime->start(QString());
        Program& app = runtime->app();
        app.files().LoadDeviceFile(testsupport::sourcePath(QStringLiteral("samples/full.ko3")));
        for (int language = 1; language <= 4; ++language) {
            app.languages().SwitchToLanguage(language);
            for (const QString& name : {frmMQ27D::kName, el::kName}) {
                auto* window = qobject_cast<QMainWindow*>(runtime->window(name));
                window->show();
                window->activateWindow();
                QVERIFY(QTest::qWaitForWindowActive(window));
                QCoreApplication::processEvents();
                QSet<QKeySequence> titles;
                for (QAction* title : window->menuBar()->actions()) {
                    QMenu* menu = title->menu();
                    if (!menu || !title->isVisible()) continue;
                    const QString where =
                        QStringLiteral("%1 in %2: %3").arg(name).arg(language).arg(menu->title());
                    const QKeySequence key = QKeySequence::mnemonic(menu->title());
                    QVERIFY2(!key.isEmpty() && !titles.contains(key), qPrintable(where));
                    titles.insert(key);
                    QTest::keySequence(window, key);
                    QTRY_VERIFY2(QApplication::activePopupWidget() == menu, qPrintable(where));
                    QSet<QKeySequence> entries;
                    for (QAction* entry : menu->actions()) {
                        if (entry->isSeparator() || !entry->isVisible()) continue;
                        const QKeySequence letter = QKeySequence::mnemonic(entry->text());
                        QVERIFY2(!letter.isEmpty() && !entries.contains(letter),
                                 qPrintable(where + QStringLiteral(" > ") + entry->text()));
                        entries.insert(letter);
                    }
                    menu->close();
                }
            }
        }
        // In the language window the arrow keys choose, also from an option that Tab reached
        // without choosing it.
        app.shell().ShowLanguage();
        QWidget* dialog = runtime->window(frmLanguage::kName);
        QVERIFY(QTest::qWaitForWindowActive(dialog));
        dialog->findChild<QAbstractButton*>(frmLanguage::optLanguage[1])->click();
        auto* english = dialog->findChild<QAbstractButton*>(frmLanguage::optLanguage[2]);
        english->setFocus(Qt::TabFocusReason);
        QTest::keyClick(english, Qt::Key_Down);
        QVERIFY(app.forms().frmLanguage().isChecked(frmLanguage::optLanguage[3]));
        dialog->close();
        // F1 asks for the help's contents: the viewer starts, or the user hears why not.
        auto asked = [this] {
            return rig->launcher.started.size() + rig->launcher.openedDocuments.size() +
                   rig->dialogs.shown.size();
        };
        const auto before = asked();
        QWidget* main = runtime->window(el::kName);
        main->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(main));
        QTest::keyClick(main, Qt::Key_F1);
        QCOMPARE(asked(), before + 1);
    }

private:
    std::unique_ptr<LiveTool> rig;
    ToolRuntime* runtime = nullptr;
};

QTEST_MAIN(TestShellWindows)
#include "tst_shellwindows.moc"
