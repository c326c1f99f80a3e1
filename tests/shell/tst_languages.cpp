#include "common/regsettings.h"
#include "common/stringtable.h"
#include "display/mainview.h"
#include "shell/languages.h"
#include "support/fakes.h"

#include <QtTest>

class TestLanguages : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyWindowSpeaksEachLanguage_data() {
        QTest::addColumn<int>("language");
        QTest::newRow("English") << 2;
        QTest::newRow("French") << 3;
        QTest::newRow("Dutch") << 4;
    }

    // Whatever a window shows in German, it shows in each language, and in the language's own
    // words where the table has them.
    void everyWindowSpeaksEachLanguage() {
        QFETCH(int, language);
        TestApp german;
        TestApp t;
        german.app->languages().SwitchToLanguage(1);
        t.app->languages().SwitchToLanguage(language);
        int translated = 0;
        for (Form* form : t.app->forms().all()) {
            const Form& before = german.app->forms().get(form->name());
            QCOMPARE(form->title().isEmpty(), before.title().isEmpty());
            for (const QString& element : form->elementNames()) {
                const QString where = form->name() + u'.' + element;
                QVERIFY2(form->caption(element).isEmpty() == before.caption(element).isEmpty(),
                         qPrintable(where));
                translated += form->caption(element) != before.caption(element);
            }
        }
        QVERIFY2(translated > 300, qPrintable(QString::number(translated)));
        // The A and B pages share a text.
        const Form& view = t.app->forms().frmDisplay();
        const Language lang = languageFromNumber(language);
        QCOMPARE(view.caption("tabDisplay_4"), StringTable::instance().text(lang, 11) + " B");
        QCOMPARE(view.caption("tabDisplay_6"), StringTable::instance().text(lang, 369) + " A");
        QCOMPARE(t.app->preferences().language(), lang);
        QCOMPARE(t.app->settings().GetLanguage(), language);
    }

    void messagesAreComposed() {
        TestApp t;
        Program& app = *t.app;
        app.languages().SwitchToLanguage(1);
        const AppMessages& m = app.texts().messages;
        QCOMPARE(m.notPossibleWithReason, "Vorgang zur Zeit nicht möglich.\r\n"
                                          "Schalten Sie zuvor SPOT·FIND im Register "
                                          "Einstellungen ein.");
        QCOMPARE(app.forms().frmMQ27D().title(), "ORVANIS SHEL·LIX" + Languages::VersionText());
        app.languages().SwitchToLanguage(2);
        QCOMPARE(m.closeQuestion, "Do you really want to terminate the diagnosis software ?");
    }

    // A language the table lacks is German, and stored as such; the language already stored is
    // not written again, in whatever form it was stored.
    void unknownOrUnchangedLanguage() {
        for (int language : {0, 9, -3}) {
            TestApp t;
            t.app->languages().SwitchToLanguage(2);
            t.app->languages().SwitchToLanguage(language);
            QCOMPARE(t.app->preferences().language(), Language::German);
            QCOMPARE(t.settings.values.value("Language"), "1");
            QCOMPARE(t.app->forms().frmMQ27D().caption("mnuFile"), "Datei");
        }
        TestApp t;
        t.settings.values["Language"] = "3 ";
        t.app->languages().SwitchToLanguage(3);
        QCOMPARE(t.settings.values.value("Language"), "3 ");
    }

    void switchRewritesOpenAndClosedWindowsAtOnce() {
        TestApp t;
        Program& app = *t.app;
        app.languages().SwitchToLanguage(1);
        Form& view = app.forms().frmDisplay();
        view.show();
        app.forms().frmMQ27D().show();
        // A view has written its own text over a legend meanwhile.
        view.setCaption("lblSerialNoLegend_3", "12345");

        QSignalSpy switched(&app.languages(), &Languages::LanguageSwitched);
        app.languages().SwitchToLanguage(2);
        QCOMPARE(switched.count(), 1);
        QCOMPARE(view.caption("lblSerialNoLegend_3"), "Serial No.");
    }

    // The start window's port monitor stays hidden and empty, and the port list's numbers stay.
    void startWindowMonitorAndPortListKeepTheirState() {
        TestApp t;
        Form& start = t.app->forms().frmMQ27D();
        start.setCaption("lblDevice", "COM port OFF");
        start.setCaption("txtComReceive", "02 0C");
        start.setVisible("fraComSend", true);
        Form& ports = t.app->forms().frmInterface();
        t.app->languages().SwitchToLanguage(2);
        QVERIFY(ports.items("cboPort").isEmpty());
        QCOMPARE(start.caption("lblDevice"), QString());
        QCOMPARE(start.caption("txtComReceive"), QString());
        QVERIFY(!start.isVisible("fraComSend") && !start.isVisible("fraComReceive"));

        ports.setItems("cboPort", {"Aus", "1", "--", "3"});
        t.app->languages().SwitchToLanguage(3);
        QCOMPARE(ports.items("cboPort"), QStringList({"Arrêt", "1", "--", "3"}));
    }

    // The dialog checks the language in use, its options exclude one another, and OK switches
    // to the checked one (option 0 is German).
    void languageDialog() {
        TestApp t;
        Program& app = *t.app;
        app.languages().SwitchToLanguage(3);
        app.languages().ShowLanguage();
        Form& dialog = app.forms().frmLanguage();
        const auto checked = [&dialog](int option) {
            for (int i = 0; i < 5; ++i)
                if (dialog.isChecked(Form::indexed(u"optLanguage", i)) != (i == option))
                    return false;
            return true;
        };
        QVERIFY(checked(3));
        dialog.userSetValue("optLanguage_2", 1);
        dialog.userSetValue("optLanguage_4", 1);
        QVERIFY(checked(4));
        dialog.click("cmdOK");
        QCOMPARE(app.preferences().language(), Language::Dutch);
        QCOMPARE(t.settings.values.value("Language"), "4");
        QVERIFY(!dialog.isShown());

        app.languages().ShowLanguage();
        QVERIFY(checked(4));
        dialog.userSetValue("optLanguage_0", 1);
        dialog.click("cmdOK");
        QCOMPARE(app.preferences().language(), Language::German);
        QCOMPARE(t.settings.values.value("Language"), "1");
    }
};

QTEST_GUILESS_MAIN(TestLanguages)
#include "tst_languages.moc"
