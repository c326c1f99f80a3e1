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
    void qtFilter_data() {
        QTest::addColumn<QString>("tool");
        QTest::addColumn<QString>("qt");
        QTest::newRow("descriptions that name their pattern")
            << "KOMPA Dateien (*.ko3)|*.ko3|Alle Dateien (*.*)|*.*|"
            << "KOMPA Dateien (*.ko3);;Alle Dateien (*.*)";
        QTest::newRow("descriptions without pattern") << "Protokoll|*.txt|Alles|*.*|"
                                                      << "Protokoll (*.txt);;Alles (*.*)";
        QTest::newRow("no closing bar") << "Protokoll|*.txt"
                                        << "Protokoll (*.txt)";
        QTest::newRow("several patterns") << "Logger (*.log;*.dat)|*.log;*.dat|"
                                          << "Logger (*.log *.dat)";
        QTest::newRow("pattern named in the middle") << "Dateien (*.ko3) von KOMPA|*.ko3|"
                                                     << "Dateien von KOMPA (*.ko3)";
        QTest::newRow("description without its pattern") << "Alles|"
                                                         << "Alles (*)";
        QTest::newRow("pattern without description") << "|*.ko3|"
                                                     << "*.ko3 (*.ko3)";
        QTest::newRow("empty") << ""
                               << "";
        QTest::newRow("only bars") << "||||"
                                   << "";
    }
    void qtFilter() {
        QFETCH(QString, tool);
        QFETCH(QString, qt);
        QCOMPARE(WidgetDialogs::qtFilter(tool), qt);
    }

    void messageBoxMapsButtonsAndAnswers_data() {
        QTest::addColumn<Buttons>("buttons");
        QTest::addColumn<Icon>("icon");
        QTest::addColumn<Answer>("defaultAnswer");
        QTest::addColumn<int>("press");
        QTest::addColumn<Answer>("answer");
        QTest::addColumn<int>("shownButtons");
        QTest::newRow("close question, No")
            << Buttons::YesNo << Icon::Warning << Answer::No << int(QMessageBox::No) << Answer::No
            << int(QMessageBox::Yes | QMessageBox::No);
        QTest::newRow("close question, Yes")
            << Buttons::YesNo << Icon::Warning << Answer::No << int(QMessageBox::Yes) << Answer::Yes
            << int(QMessageBox::Yes | QMessageBox::No);
        QTest::newRow("retry") << Buttons::AbortRetryIgnore << Icon::Critical << Answer::Retry
                               << int(QMessageBox::Retry) << Answer::Retry
                               << int(QMessageBox::Abort | QMessageBox::Retry |
                                      QMessageBox::Ignore);
        QTest::newRow("information") << Buttons::Ok << Icon::Information << Answer::Ok
                                     << int(QMessageBox::Ok) << Answer::Ok << int(QMessageBox::Ok);
    }
    void messageBoxMapsButtonsAndAnswers() {
        QFETCH(Buttons, buttons);
        QFETCH(Icon, icon);
        QFETCH(Answer, defaultAnswer);
        QFETCH(int, press);
        QFETCH(Answer, answer);
        QFETCH(int, shownButtons);
        QString text;
        int shown = 0;
        QMessageBox::Icon shownIcon = QMessageBox::NoIcon;
        QAbstractButton* defaultButton = nullptr;
        QAbstractButton* expectedDefault = nullptr;
        whenShown<QMessageBox>([&](QMessageBox* box) {
            text = box->text();
            shown = int(box->standardButtons());
            shownIcon = box->icon();
            defaultButton = box->defaultButton();
            expectedDefault = box->button(defaultAnswer == Answer::No      ? QMessageBox::No
                                          : defaultAnswer == Answer::Retry ? QMessageBox::Retry
                                                                           : QMessageBox::Ok);
            box->button(QMessageBox::StandardButton(press))->click();
        });
        WidgetDialogs dialogs;
        const Answer given =
            dialogs.messageBox(QStringLiteral("Zeile 1\r\n\r\nZeile 2"),
                               QStringLiteral("ORVANIS SHEL·LIX"), buttons, icon, defaultAnswer);
        QCOMPARE(given, answer);
        QCOMPARE(shown, shownButtons);
        QCOMPARE(text, QStringLiteral("Zeile 1\n\nZeile 2"));
        QCOMPARE(defaultButton, expectedDefault);
        QVERIFY(shownIcon != QMessageBox::NoIcon);
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

    void firstSuffix_data() {
        QTest::addColumn<QString>("tool");
        QTest::addColumn<QString>("suffix");
        QTest::newRow("device files") << "KOMPA Dateien (*.ko3)|*.ko3|Alle Dateien (*.*)|*.*|"
                                      << "ko3";
        QTest::newRow("first of several") << "Logger|*.log;*.dat|"
                                          << "log";
        QTest::newRow("all files has none") << "Alle Dateien (*.*)|*.*|"
                                            << "";
        QTest::newRow("wildcard suffix has none") << "Dateien|*.ko?|"
                                                  << "";
        QTest::newRow("no pattern") << "Dateien"
                                    << "";
    }
    void firstSuffix() {
        QFETCH(QString, tool);
        QFETCH(QString, suffix);
        QCOMPARE(WidgetDialogs::firstSuffix(tool), suffix);
    }
};

QTEST_MAIN(TestWidgetDialogs)
#include "tst_widgetdialogs.moc"
