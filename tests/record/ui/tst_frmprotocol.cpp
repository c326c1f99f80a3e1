#include "common/mainview_elements.h"
#include "common/record_elements.h"
#include "shell/program.h"
#include "shell/ui/toolruntime.h"
#include "support/fakes.h"

#include <QFontInfo>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

// The record window as the engineer sees it: the menu entry, the comment lines, the pages.
class TestFrmProtocol : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void recordShowsItsPages() {
        ToolRuntime::Options options;
        options.port = &port;
        options.dialogs = &dialogs;
        options.settings = &settings;
        options.launcher = &launcher;
        options.programDir = folder.path();
        options.dataDir = folder.path();
        options.exitEventLoop = false;
        ToolRuntime runtime(options);
        Forms& forms = runtime.app().forms();
        forms.frmDisplay().load();
        forms.frmDisplay().click(frmDisplay::mnuProtocolCreate);
        QWidget* comment = runtime.window(formname::frmProtocolComment);
        QVERIFY(comment->isVisible());
        auto* line = comment->findChild<QLineEdit*>(QString(frmProtocolComment::txtComment1));
        QCOMPARE(line->maxLength(), 84);
        QTest::keyClicks(line, QStringLiteral("Visit"));
        comment->findChild<QPushButton*>(QString(frmProtocolComment::cmdOK))->click();
        QVERIFY(!comment->isVisible());

        QWidget* record = runtime.window(formname::frmProtocol);
        QVERIFY(record->isVisible());
        for (int i = 0; i < 3; ++i) {
            auto* view = record->findChild<QPlainTextEdit*>(frmProtocol::rtxtProtocol[i]);
            QVERIFY(view->isReadOnly());
            QVERIFY(QFontInfo(view->font()).fixedPitch());
            QString text = forms.frmProtocol().caption(frmProtocol::rtxtProtocol[i]);
            QCOMPARE(view->toPlainText(),
                     text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
            QCOMPARE(view->document()->blockCount(), i == 0 ? 161 : 81);
        }
        QVERIFY(record->findChild<QPlainTextEdit*>(frmProtocol::rtxtProtocol[1])
                    ->toPlainText()
                    .startsWith(QStringLiteral("       Visit")));
        record->findChild<QPushButton*>(QString(frmProtocol::cmdCancel))->click();
        QVERIFY(!record->isVisible());
    }

private:
    FakeSerialPort port;
    ScriptedDialogs dialogs;
    MemorySettings settings;
    FakeLauncher launcher;
    QTemporaryDir folder;
};

QTEST_MAIN(TestFrmProtocol)
#include "tst_frmprotocol.moc"
