#include "common/ui/widgetdialogs.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

#include <functional>

namespace {

using Answer = UserDialogs::Answer;
using Buttons = UserDialogs::Buttons;
using Icon = UserDialogs::Icon;

// Runs `look` on the dialog that the next modal loop shows.
template <typename Dialog>
void whenShown(std::function<void(Dialog*)> look) {
    QTimer::singleShot(0, [look] {
        auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        look(dialog);
    });
}

} // namespace

class TestWidgetDialogs : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The tool's filter text as the file dialogs take it, and the suffix a saved name gets.
    void qtFilter_data() {
        QTest::addColumn<QString>("tool");
        QTest::addColumn<QString>("qt");
        QTest::addColumn<QString>("suffix");
        const auto row = [](const char* name, const char* tool, const char* qt,
                            const char* suffix) {
            QTest::newRow(name) << QString(tool) << QString(qt) << QString(suffix);
        };
        row("descriptions that name their pattern",
            "KOMPA Dateien (*.ko3)|*.ko3|Alle Dateien (*.*)|*.*|",
            "KOMPA Dateien (*.ko3);;Alle Dateien (*.*)", "ko3");
        row("descriptions without pattern, no closing bar", "Protokoll|*.txt|Alles|*.*",
            "Protokoll (*.txt);;Alles (*.*)", "txt");
        row("several patterns", "Logger (*.log;*.dat)|*.log;*.dat|", "Logger (*.log *.dat)", "log");
        row("pattern named in the middle", "Dateien (*.ko3) von KOMPA|*.ko3|",
            "Dateien von KOMPA (*.ko3)", "ko3");
        row("wildcard suffix", "Dateien|*.ko?|", "Dateien (*.ko?)", "");
        row("description without its pattern", "Alles|", "Alles (*)", "");
        row("pattern without description", "|*.ko3|", "*.ko3 (*.ko3)", "ko3");
        row("only bars", "||||", "", "");
    }
    void qtFilter() {
        QFETCH(QString, tool);
        QTEST(WidgetDialogs::qtFilter(tool), "qt");
        QTEST(WidgetDialogs::firstSuffix(tool), "suffix");
    }

    // The default button is the one Enter presses: No for the close question.
    void messageBoxMapsButtonsAndAnswers_data() {
        QTest::addColumn<Buttons>("buttons");
        QTest::addColumn<Answer>("defaultAnswer");
        QTest::addColumn<int>("defaultButton");
        QTest::addColumn<int>("press");
        QTest::addColumn<Answer>("answer");
        QTest::addColumn<int>("shownButtons");
        QTest::newRow("close question, Yes")
            << Buttons::YesNo << Answer::No << int(QMessageBox::No) << int(QMessageBox::Yes)
            << Answer::Yes << int(QMessageBox::Yes | QMessageBox::No);
        QTest::newRow("retry") << Buttons::AbortRetryIgnore << Answer::Retry
                               << int(QMessageBox::Retry) << int(QMessageBox::Retry)
                               << Answer::Retry
                               << int(QMessageBox::Abort | QMessageBox::Retry |
                                      QMessageBox::Ignore);
    }
    void messageBoxMapsButtonsAndAnswers() {
        QFETCH(Buttons, buttons);
        QFETCH(Answer, defaultAnswer);
        QFETCH(int, defaultButton);
        QFETCH(int, press);
        QString text;
        int shown = 0;
        bool rightDefault = false;
        whenShown<QMessageBox>([&](QMessageBox* box) {
            text = box->text();
            shown = int(box->standardButtons());
            rightDefault =
                box->defaultButton() == box->button(QMessageBox::StandardButton(defaultButton));
            box->button(QMessageBox::StandardButton(press))->click();
        });
        WidgetDialogs dialogs;
        QTEST(dialogs.messageBox(QStringLiteral("Zeile 1\r\n\r\nZeile 2"),
                                 QStringLiteral("ORVANIS SHEL·LIX"), buttons, Icon::Warning,
                                 defaultAnswer),
              "answer");
        QTEST(shown, "shownButtons");
        QCOMPARE(text, QStringLiteral("Zeile 1\n\nZeile 2"));
        QVERIFY(rightDefault);
    }

    void saveDialogLeavesTheOverwriteQuestionToTheCaller() {
        bool confirms = true;
        QStringList filters;
        QString suffix;
        whenShown<QFileDialog>([&](QFileDialog* dialog) {
            confirms = !dialog->testOption(QFileDialog::DontConfirmOverwrite);
            filters = dialog->nameFilters();
            suffix = dialog->defaultSuffix();
            dialog->reject();
        });
        WidgetDialogs dialogs;
        const auto name = dialogs.saveFileName(QStringLiteral("1001.ko3"),
                                               QStringLiteral("KOMPA Dateien (*.ko3)|*.ko3|"));
        QVERIFY(!name);
        QVERIFY(!confirms);
        QCOMPARE(filters, QStringList{QStringLiteral("KOMPA Dateien (*.ko3)")});
        QCOMPARE(suffix, QStringLiteral("ko3"));
    }
};

QTEST_MAIN(TestWidgetDialogs)
#include "tst_widgetdialogs.moc"
