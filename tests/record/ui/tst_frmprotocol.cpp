#include "display/mainview_elements.h"
#include "record/record_elements.h"
#include "shell/program.h"
#include "shell/ui/toolruntime.h"
#include "support/livetool.h"

#include <QFile>
#include <QFontInfo>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

#include <memory>

// The record window as the engineer sees it: the menu entry, the comment lines, the pages,
// the printer dialog and the PDF. The pages are painted by the code that writes the command
// line's PDF, whose test reads them back page by page.
class TestFrmProtocol : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        rig = std::make_unique<LiveTool>();
        forms().frmDisplay().load();
    }
    void cleanup() { rig.reset(); }

    void recordShowsItsPages() {
        forms().frmDisplay().click(frmDisplay::mnuProtocolCreate);
        QWidget* comment = window(frmProtocolComment::kName);
        QVERIFY(comment->isVisible());
        auto* line = comment->findChild<QLineEdit*>(QString(frmProtocolComment::txtComment1));
        QCOMPARE(line->maxLength(), 84);
        QTest::keyClicks(line, QStringLiteral("Visit"));
        comment->findChild<QPushButton*>(QString(frmProtocolComment::cmdOK))->click();
        QVERIFY(!comment->isVisible());

        QWidget* record = window(frmProtocol::kName);
        QVERIFY(record->isVisible());
        for (int i = 0; i < 3; ++i) {
            auto* view = record->findChild<QPlainTextEdit*>(frmProtocol::rtxtProtocol[i]);
            QVERIFY(view->isReadOnly());
            QVERIFY(QFontInfo(view->font()).fixedPitch());
            QString text = forms().frmProtocol().caption(frmProtocol::rtxtProtocol[i]);
            QCOMPARE(view->toPlainText(), text.replace("\r\n", "\n"));
            QCOMPARE(view->document()->blockCount(), i == 0 ? 161 : 81);
        }
        QVERIFY(
            forms().frmProtocol().caption(frmProtocol::rtxtProtocol[1]).startsWith("       Visit"));
        QCOMPARE(forms().frmProtocol().caption(frmProtocol::rtxtProtocol[0]),
                 forms().frmProtocol().caption(frmProtocol::rtxtProtocol[1]) +
                     forms().frmProtocol().caption(frmProtocol::rtxtProtocol[2]));

        // A printer dialog the user cancels leaves the window as it was.
        QTimer::singleShot(0, [] {
            if (QWidget* dialog = QApplication::activeModalWidget()) dialog->close();
        });
        record->findChild<QPushButton*>(QString(frmProtocol::cmdPrint))->click();
        QVERIFY(record->isVisible() && record->isEnabled());
        QVERIFY(rig->dialogs.shown.isEmpty());

        const QString pdf = rig->folder.filePath(QStringLiteral("record.pdf"));
        rig->dialogs.saveName = pdf;
        record->findChild<QPushButton*>(QString(frmProtocol::cmdPdf))->click();
        QFile written(pdf);
        QVERIFY(written.open(QIODevice::ReadOnly));
        QVERIFY(written.readAll().startsWith("%PDF-"));

        record->findChild<QPushButton*>(QString(frmProtocol::cmdCancel))->click();
        QVERIFY(!record->isVisible());
    }

private:
    AllForms& forms() { return rig->app().forms(); }
    QWidget* window(const QString& name) { return rig->runtime().window(name); }

    std::unique_ptr<LiveTool> rig;
};

QTEST_MAIN(TestFrmProtocol)
#include "tst_frmprotocol.moc"
