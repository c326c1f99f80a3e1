// The tool as the engineer meets it around the poll: a saved read-out replayed offline, the
// language switch and settings across a restart.
#include "common/formmodel.h"
#include "common/forms.h"
#include "common/platformservices.h"
#include "display/mainview.h"
#include "engine/telegramstore.h"
#include "files/ko3format.h"
#include "link/seriallink.h"
#include "shell/appshell.h"
#include "shell/languages.h"
#include "shell/program.h"
#include "shell/ui/toolruntime.h"
#include "support/livetool.h"
#include "support/simprocess.h"
#include "support/testsupport.h"

#include <QAbstractButton>
#include <QDir>
#include <QLabel>
#include <QLocale>
#include <QSettings>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

namespace {

// Every text a window shows: its title, labels, buttons and tabs, by object name.
QMap<QString, QString> textsOf(const QWidget* window) {
    QMap<QString, QString> texts{{QStringLiteral("(title)"), window->windowTitle()}};
    for (const auto* label : window->findChildren<QLabel*>())
        texts.insert(label->objectName(), label->text());
    for (const auto* button : window->findChildren<QAbstractButton*>())
        texts.insert(button->objectName(), button->text());
    for (const auto* tabs : window->findChildren<QTabWidget*>()) {
        for (int i = 0; i < tabs->count(); ++i)
            texts.insert(tabs->objectName() + QString::number(i), tabs->tabText(i));
    }
    return texts;
}

} // namespace

class TestLiveShell : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void replaysASavedReadOutOffline();
    void languageSwitchRewritesEveryOpenWindow();
    void settingsSurviveARestart();
};

void TestLiveShell::replaysASavedReadOutOffline() {
    SimProcess sim;
    QVERIFY(sim.start({"--profile", SimProcess::profile("minimal")}));
    LiveTool tool(sim.portPath());
    const QString sample = testsupport::sourcePath(QStringLiteral("samples/full.ko3"));
    tool.start(sample);

    QVERIFY(QTest::qWaitFor([&] { return tool.display().isShown(); }, 5000));
    QVERIFY(!tool.app().link().IsPortOpen());
    QCOMPARE(tool.display().caption(QStringLiteral("lblSerialNo_0")), QStringLiteral("1234567"));
    const auto block = ko3::SplitDeviceBlock(ko3::ParseHexLine(*ko3::ReadFirstLine(sample)));
    const auto recorded = engine::TelegramTime(block.telegrams.back());
    QVERIFY(recorded);
    const QString title = tool.display().title();
    QVERIFY2(title.contains(QLocale::system().toString(recorded->time(), QLocale::LongFormat)),
             qPrintable(title));
    QVERIFY(title.contains(QLocale::system().toString(recorded->date(), QLocale::ShortFormat)));

    // Nothing goes to the device while a file is viewed, not after a search step either, and
    // it never saves itself.
    SerialLink& link = tool.app().link();
    const auto sentBefore = sim.requests().size();
    if (link.tmrZeroCommand().isEnabled()) {
        QSignalSpy searchStep(&link.tmrZeroCommand(), &FormTimer::timeout);
        QVERIFY(searchStep.wait(5000));
    }
    QVERIFY(!link.IsPortOpen());
    QCOMPARE(sim.requests().size(), sentBefore);
    QVERIFY(!QDir(tool.programDir()).exists(QStringLiteral("AutoSave")));
}

void TestLiveShell::languageSwitchRewritesEveryOpenWindow() {
    LiveTool tool(QStringLiteral("/nonexistent/port"));
    tool.start(testsupport::sourcePath(QStringLiteral("samples/full.ko3")));
    QVERIFY(QTest::qWaitFor([&] { return tool.display().isShown(); }, 5000));
    AppShell& shell = tool.app().shell();
    shell.ShowInfo();
    shell.ShowInterface();
    shell.ShowLanguage();
    ToolRuntime& runtime = tool.runtime();
    const QStringList open{"frmDisplay", "frmAbout", "frmInterface", "frmLanguage"};
    QMap<QString, QMap<QString, QString>> before;
    for (const QString& name : open) {
        QVERIFY2(runtime.window(name) && runtime.window(name)->isVisible(), qPrintable(name));
        before.insert(name, textsOf(runtime.window(name)));
    }

    // English, chosen in the language window as the engineer does.
    QWidget* languageWindow = runtime.window(QStringLiteral("frmLanguage"));
    languageWindow->findChild<QAbstractButton*>(QStringLiteral("optLanguage_2"))->click();
    languageWindow->findChild<QAbstractButton*>(QStringLiteral("cmdOK"))->click();
    QCOMPARE(tool.app().preferences().language(), Language::English);
    for (const QString& name : open) {
        if (name == u"frmLanguage") continue; // closed by its OK button
        QVERIFY2(textsOf(runtime.window(name)) != before.value(name), qPrintable(name));
    }

    // Back to German: every text as it was.
    shell.ShowLanguage();
    languageWindow->findChild<QAbstractButton*>(QStringLiteral("optLanguage_1"))->click();
    languageWindow->findChild<QAbstractButton*>(QStringLiteral("cmdOK"))->click();
    for (const QString& name : open) {
        if (name == u"frmLanguage") continue;
        QCOMPARE(textsOf(runtime.window(name)), before.value(name));
    }
}

void TestLiveShell::settingsSurviveARestart() {
    QTemporaryDir folder;
    const QString ini = folder.filePath(QStringLiteral("Kompa3.conf"));
    auto store = [&] {
        return std::make_unique<QSettingsStore>(
            std::make_unique<QSettings>(ini, QSettings::IniFormat));
    };
    {
        auto settings = store();
        LiveTool tool(QStringLiteral("/nonexistent/port"), settings.get());
        tool.start();
        tool.app().languages().SwitchToLanguage(3);
        tool.app().mainView().SwitchToTemperature(2);
        QVERIFY(tool.app().shell().CloseApplication());
    }
    auto settings = store();
    LiveTool tool(QStringLiteral("/nonexistent/port"), settings.get());
    tool.start();
    QCOMPARE(tool.app().preferences().language(), Language::French);
    QCOMPARE(tool.app().preferences().temperatureUnit(), TemperatureUnit::Fahrenheit);
}

QTEST_MAIN(TestLiveShell)
#include "tst_liveshell.moc"
