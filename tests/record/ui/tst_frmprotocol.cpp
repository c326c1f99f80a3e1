#include "display/mainview_elements.h"
#include "record/record_elements.h"
#include "shell/program.h"
#include "shell/ui/toolruntime.h"
#include "support/fakes.h"

#include <QFile>
#include <QFontInfo>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
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
        AllForms& forms = runtime.app().forms();
        forms.frmDisplay().load();
        forms.frmDisplay().click(frmDisplay::mnuProtocolCreate);
        QWidget* comment = runtime.window(frmProtocolComment::kName);
        QVERIFY(comment->isVisible());
        auto* line = comment->findChild<QLineEdit*>(QString(frmProtocolComment::txtComment1));
        QCOMPARE(line->maxLength(), 84);
        QTest::keyClicks(line, QStringLiteral("Visit"));
        comment->findChild<QPushButton*>(QString(frmProtocolComment::cmdOK))->click();
        QVERIFY(!comment->isVisible());

        QWidget* record = runtime.window(frmProtocol::kName);
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

        // A printer dialog the user cancels leaves the window as it was.
        QTimer::singleShot(0, [] {
            if (QWidget* dialog = QApplication::activeModalWidget()) dialog->close();
        });
        record->findChild<QPushButton*>(QString(frmProtocol::cmdPrint))->click();
        QVERIFY(record->isVisible() && record->isEnabled());
        QVERIFY(dialogs.shown.isEmpty());

        const QString pdf = folder.filePath(QStringLiteral("record.pdf"));
        dialogs.saveName = pdf;
        record->findChild<QPushButton*>(QString(frmProtocol::cmdPdf))->click();
        QFile written(pdf);
        QVERIFY(written.open(QIODevice::ReadOnly));
        QVERIFY(written.readAll().startsWith("%PDF-"));

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
