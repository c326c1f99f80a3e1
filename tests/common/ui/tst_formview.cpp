#include "common/ui/colorbox.h"
#include "common/ui/formview.h"

#include <QtTest>
#include <QtWidgets>

#include <memory>

#define SAMPLE_ELEMENTS(ONE, MANY, MORE)                                                           \
    ONE(mnuFile, Menu)                                                                             \
    ONE(mnuLoad, Menu)                                                                             \
    ONE(mnuCelsius, Menu)                                                                          \
    MANY(tabMain, Tab, 0, 2)                                                                       \
    ONE(lblText, Label)                                                                            \
    ONE(cmdGo, Button)                                                                             \
    ONE(txtLine, Text)                                                                             \
    ONE(txtMulti, Text)                                                                            \
    ONE(fraBox, Frame)                                                                             \
    ONE(chkTick, Check)                                                                            \
    MANY(optChoice, Option, 0, 1)                                                                  \
    ONE(cboList, Combo)                                                                            \
    ONE(lstList, List)                                                                             \
    ONE(ctrUpDown, UpDown)                                                                         \
    ONE(picLamp, Box)                                                                              \
    ONE(lblNowhere, Label)
MQ27_DECLARE_FORM(frmSample, SAMPLE_ELEMENTS)

namespace {

// One element of every kind the binder knows, in a dialog so that Escape counts.
class Sample : public QDialog {
public:
    explicit Sample(const QString& name = QStringLiteral("frmSample")) {
        setObjectName(name);
        auto* bar = new QMenuBar(this);
        menu = named<QMenu>(QStringLiteral("mnuFile"), bar);
        bar->addMenu(menu);
        action = named<QAction>(QStringLiteral("mnuLoad"), this);
        menu->addAction(action);
        check = named<QAction>(QStringLiteral("mnuCelsius"), this);
        check->setCheckable(true);
        menu->addAction(check);

        tabs = named<QTabWidget>(QStringLiteral("tabMain"));
        for (int i = 0; i < 3; ++i)
            tabs->addTab(named<QWidget>(Form::indexed(u"tabMain", i)), QString());

        auto* layout = new QVBoxLayout(this);
        layout->setMenuBar(bar);
        for (QWidget* w : std::initializer_list<QWidget*>{
                 label = named<QLabel>(QStringLiteral("lblText"), QStringLiteral("design")),
      button = named<QPushButton>(QStringLiteral("cmdGo")),
      line = named<QLineEdit>(QStringLiteral("txtLine")),
      text = named<QPlainTextEdit>(QStringLiteral("txtMulti")),
      frame = named<QGroupBox>(QStringLiteral("fraBox")),
      tick = named<QCheckBox>(QStringLiteral("chkTick")),
      optionA = named<QRadioButton>(QStringLiteral("optChoice_0")),
      optionB = named<QRadioButton>(QStringLiteral("optChoice_1")),
      combo = named<QComboBox>(QStringLiteral("cboList")),
      list = named<QListWidget>(QStringLiteral("lstList")),
      spin = named<QSpinBox>(QStringLiteral("ctrUpDown")),
      box = named<ColorBox>(QStringLiteral("picLamp")), tabs})
            layout->addWidget(w);
    }

    QMenu* menu;
    QAction *action, *check;
    QTabWidget* tabs;
    QLabel* label;
    QPushButton* button;
    QLineEdit* line;
    QPlainTextEdit* text;
    QGroupBox* frame;
    QCheckBox* tick;
    QRadioButton *optionA, *optionB;
    QComboBox* combo;
    QListWidget* list;
    QSpinBox* spin;
    ColorBox* box;
};

} // namespace

class TestFormView : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The last test's view goes before the window and the model it binds.
    void init() {
        view.reset();
        window = std::make_unique<Sample>();
        form = std::make_unique<Form>(QStringLiteral("frmSample"), frmSample::kElements);
        view = std::make_unique<FormView>(*form, window.get());
    }

    void captionReachesEveryKind() {
        const QStringList names = {"lblText", "txtLine", "txtMulti",  "fraBox", "mnuFile",
                                   "mnuLoad", "chkTick", "tabMain_1", "cmdGo"};
        for (const QString& name : names)
            form->setCaption(name, name + QStringLiteral(" ÄÖÜ"));
        const QStringList shown = {
            window->label->text(),  window->line->text(),     window->text->toPlainText(),
            window->frame->title(), window->menu->title(),    window->action->text(),
            window->tick->text(),   window->tabs->tabText(1), window->button->text().remove(u'&')};
        for (qsizetype i = 0; i < names.size(); ++i)
            QCOMPARE(shown[i], names[i] + QStringLiteral(" ÄÖÜ"));
        QVERIFY(!view->target(QStringLiteral("lblNowhere")));
    }

    // The mnemonics of a dialog are decided afresh from all its captions whenever one
    // changes; the model keeps the caption as it was given.
    void buttonsAndFieldLabelsGetFreeMnemonics() {
        auto* other = new QPushButton(QStringLiteral("Abbrechen"), window.get());
        window->label->setBuddy(window->line);
        form->setCaption(QStringLiteral("cmdGo"), QStringLiteral("Anwenden & Schließen"));
        form->setCaption(QStringLiteral("lblText"), QStringLiteral("Wert"));
        form->setCaption(QStringLiteral("chkTick"), QStringLiteral("Ein & Aus"));
        QCOMPARE(window->button->text(), QStringLiteral("&Anwenden && Schließen"));
        QCOMPARE(other->text(), QStringLiteral("A&bbrechen"));
        QCOMPARE(window->label->text(), QStringLiteral("&Wert"));
        QCOMPARE(window->tick->text(), QStringLiteral("Ein && Aus"));
        QCOMPARE(form->caption(QStringLiteral("cmdGo")), QStringLiteral("Anwenden & Schließen"));
        QCOMPARE(QAccessible::queryAccessibleInterface(window->button)->text(QAccessible::Name),
                 QStringLiteral("Anwenden & Schließen"));

        form->setCaption(QStringLiteral("cmdGo"), QStringLiteral("OK"));
        form->setCaption(QStringLiteral("lblText"), QStringLiteral("O"));
        QCOMPARE(window->button->text(), QStringLiteral("&OK"));
        QCOMPARE(other->text(), QStringLiteral("&Abbrechen"));
        QCOMPARE(window->label->text(), QStringLiteral("O"));
    }

    // What the model sets reaches the view and is not reported back as the user's input.
    void valueReachesEveryKind() {
        window->show();
        window->combo->addItems({"a", "b", "c"});
        window->list->addItems({"x", "y", "z"});
        form->setChecked(QStringLiteral("optChoice_0"), true);
        QSignalSpy edited(form.get(), &Form::edited);
        QSignalSpy clicked(form.get(), &Form::clicked);
        form->setRange(QStringLiteral("ctrUpDown"), 0, 50, 5);
        form->setCaption(QStringLiteral("txtMulti"), QStringLiteral("y"));
        form->setChecked(QStringLiteral("chkTick"), true);
        form->setChecked(QStringLiteral("mnuCelsius"), true);
        form->setChecked(QStringLiteral("optChoice_1"), true); // unchecks option 0 in the view
        form->setValue(QStringLiteral("cboList"), 2);
        form->setValue(QStringLiteral("lstList"), 1);
        form->setValue(QStringLiteral("tabMain"), 2);
        form->setValue(QStringLiteral("ctrUpDown"), 35);
        QVERIFY(window->tick->isChecked() && window->check->isChecked());
        QVERIFY(window->optionB->isChecked());
        QCOMPARE(window->combo->currentIndex(), 2);
        QCOMPARE(window->list->currentRow(), 1);
        QCOMPARE(window->tabs->currentIndex(), 2);
        QCOMPARE(window->spin->value(), 35);
        QCOMPARE(window->spin->singleStep(), 5);
        QVERIFY(edited.isEmpty() && clicked.isEmpty());
        QVERIFY(form->isChecked(QStringLiteral("optChoice_0"))); // the model's own business
        form->setItems(QStringLiteral("cboList"), {"Aus", "1", "--"});
        QCOMPARE(window->combo->currentText(), QStringLiteral("--")); // the model's selection

        // Numbers no index can hold leave nothing selected instead of wrapping around.
        form->setValue(QStringLiteral("cboList"), 1e300);
        QCOMPARE(window->combo->currentIndex(), -1);
        form->setValue(QStringLiteral("lstList"), std::nan(""));
        QCOMPARE(window->list->currentRow(), -1);
    }

    // A list of hundreds of rows that changes with every telegram: a changed text rewrites
    // its row only, so that ticks, selection and scroll position stay.
    void tickMarksFollowTheModelAndTheUser() {
        QWidget ticked;
        auto* list = named<QListWidget>(QStringLiteral("lstList"));
        list->setParent(&ticked);
        FormView::giveTickMarks(list);
        FormView tickedView(*form, &ticked);
        form->setItems(QStringLiteral("lstList"), {"a", "b", "c"});
        form->setTicked(QStringLiteral("lstList"), 1, true);
        QListWidgetItem* second = list->item(1);
        QCOMPARE(second->checkState(), Qt::Checked);
        form->setItems(QStringLiteral("lstList"), {"a", "B", "c", "d"});
        QCOMPARE(list->item(1), second);
        QCOMPARE(second->text(), QStringLiteral("B"));
        QCOMPARE(second->checkState(), Qt::Checked);
        QCOMPARE(list->item(3)->checkState(), Qt::Unchecked);

        QSignalSpy edited(form.get(), &Form::edited);
        list->item(3)->setCheckState(Qt::Checked);
        QVERIFY(form->isTicked(QStringLiteral("lstList"), 3));
        QCOMPARE(edited.count(), 1);
        form->setTicked(QStringLiteral("lstList"), 1, false);
        QCOMPARE(second->checkState(), Qt::Unchecked);
        QCOMPARE(edited.count(), 1); // the model's own change is not the user's
        form->setItems(QStringLiteral("lstList"), {"a"});
        QCOMPARE(list->count(), 1);
    }

    void visibleEnabledAndToolTipReachWidgetsActionsMenusAndTabs() {
        window->show();
        for (const char* name : {"lblText", "mnuFile", "mnuLoad", "tabMain_1"}) {
            form->setVisible(name, false);
            form->setEnabled(name, false);
        }
        QVERIFY(window->label->isHidden() && !window->label->isEnabled());
        QVERIFY(!window->menu->menuAction()->isVisible() &&
                !window->menu->menuAction()->isEnabled());
        QVERIFY(!window->action->isVisible() && !window->action->isEnabled());
        QVERIFY(!window->tabs->isTabVisible(1) && !window->tabs->isTabEnabled(1));
        form->setVisible(QStringLiteral("tabMain_1"), true);
        QVERIFY(window->tabs->isTabVisible(1));
        form->setToolTip(QStringLiteral("tabMain_0"), QStringLiteral("Zustände"));
        QCOMPARE(window->tabs->tabToolTip(0), QStringLiteral("Zustände"));
    }

    // Red in the low byte; the system colours and the default from the palette.
    void modelColorTranslatesNumbers() {
        QPalette p;
        p.setColor(QPalette::Base, QColor(250, 251, 252));
        p.setColor(QPalette::Button, QColor(200, 201, 202));
        p.setColor(QPalette::ButtonText, QColor(10, 11, 12));
        p.setColor(QPalette::Window, QColor(230, 231, 232));
        const std::pair<std::uint32_t, QColor> cases[] = {
            {colors::rgb(1, 2, 3), QColor(1, 2, 3)},
            {colors::kWindowBackground, QColor(250, 251, 252)},
            {colors::kButtonText, QColor(10, 11, 12)},
            {0x80000033, QColor(230, 231, 232)}}; // an unknown system colour: the own colour
        for (const auto& [color, expected] : cases)
            QCOMPARE(modelColor(color, p, QPalette::Window), expected);
        QCOMPARE(modelColor(colors::kDefault, p, QPalette::Button), QColor(200, 201, 202));
    }

    void coloursPaintTheRoleOfTheKindAndDefaultRestores() {
        const QColor ownBase = window->line->palette().color(QPalette::Base);
        form->setBackColor(QStringLiteral("lblText"), colors::kGreen);
        form->setBackColor(QStringLiteral("txtLine"), colors::kYellow);
        form->setForeColor(QStringLiteral("cmdGo"), colors::kRed);
        QCOMPARE(window->label->palette().color(QPalette::Window), QColor(0, 255, 0));
        QVERIFY(window->label->autoFillBackground());
        QCOMPARE(window->line->palette().color(QPalette::Base), QColor(255, 255, 0));
        QCOMPARE(window->button->palette().color(QPalette::ButtonText), QColor(255, 0, 0));

        form->setBackColor(QStringLiteral("lblText"), colors::kDefault);
        form->setBackColor(QStringLiteral("txtLine"), colors::kDefault);
        QVERIFY(!window->label->autoFillBackground());
        QCOMPARE(window->line->palette().color(QPalette::Base), ownBase);

        // A drawn element keeps the model's numbers and paints them itself.
        form->setBackColor(QStringLiteral("picLamp"), colors::kGreen);
        QCOMPARE(window->box->backColor(), colors::kGreen);
        QVERIFY(!window->box->autoFillBackground());
    }

    void bindAppliesWhatTheModelHeldBefore() {
        Form early(QStringLiteral("frmEarly"), frmSample::kElements);
        early.setCaption(QStringLiteral("cmdGo"), QStringLiteral("Übernehmen"));
        early.setItems(QStringLiteral("cboList"), {"Aus", "1", "2"});
        early.setValue(QStringLiteral("cboList"), 2);
        early.setVisible(QStringLiteral("tabMain_2"), false);
        early.setChecked(QStringLiteral("chkTick"), true);
        early.setTitle(QStringLiteral("Früh"));
        early.show(true);
        Sample late(QStringLiteral("frmEarly"));
        FormView lateView(early, &late);
        QCOMPARE(late.button->text(), QStringLiteral("&Übernehmen"));
        QCOMPARE(late.combo->currentIndex(), 2);
        QVERIFY(!late.tabs->isTabVisible(2));
        QVERIFY(late.tick->isChecked());
        QCOMPARE(late.windowTitle(), QStringLiteral("Früh"));
        QVERIFY(late.isVisible() && late.windowModality() == Qt::ApplicationModal);
        // What the model never set keeps the window's own design.
        QCOMPARE(late.label->text(), QStringLiteral("design"));
    }

    void userInputReachesTheModel() {
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        QSignalSpy clicked(form.get(), &Form::clicked);
        QSignalSpy doubleClicked(form.get(), &Form::doubleClicked);
        form->setItems(QStringLiteral("cboList"), {"a", "b", "c"});
        form->setItems(QStringLiteral("lstList"), {"1001", "2002"});
        form->setRange(QStringLiteral("ctrUpDown"), 0, 10);

        QTest::keyClicks(window->line, QStringLiteral("42"));
        window->text->setPlainText(QStringLiteral("zwei\nZeilen"));
        window->tick->click();
        window->optionB->click();
        QTest::mouseClick(window->button, Qt::LeftButton);
        window->combo->setFocus();
        QTest::keyClick(window->combo, Qt::Key_Down);
        window->tabs->setCurrentIndex(2);
        window->spin->setValue(7);
        window->check->trigger();
        const QRect second = window->list->visualItemRect(window->list->item(1));
        QTest::mouseClick(window->list->viewport(), Qt::LeftButton, {}, second.center());
        QTest::mouseDClick(window->list->viewport(), Qt::LeftButton, {}, second.center());

        QCOMPARE(form->caption(QStringLiteral("txtLine")), QStringLiteral("42"));
        QCOMPARE(form->caption(QStringLiteral("txtMulti")), QStringLiteral("zwei\nZeilen"));
        QVERIFY(form->isChecked(QStringLiteral("chkTick")));
        QVERIFY(form->isChecked(QStringLiteral("optChoice_1")));
        for (const auto& [name, value] :
             {std::pair{"cboList", 1.0}, {"tabMain", 2.0}, {"ctrUpDown", 7.0}, {"lstList", 1.0}})
            QCOMPARE(form->value(name), value);
        QVERIFY(form->isChecked(QStringLiteral("mnuCelsius")));
        QStringList clicks;
        for (const auto& call : clicked)
            clicks << call.at(0).toString();
        QCOMPARE(clicks, QStringList({"chkTick", "optChoice_1", "cmdGo", "mnuCelsius"}));
        QCOMPARE(doubleClicked.count(), 1);
        QCOMPARE(doubleClicked.at(0).at(0).toString(), QStringLiteral("lstList"));
    }

    void windowFollowsTheModelAndARefusedCloseKeepsIt() {
        form->setTitle(QStringLiteral("ORVANIS SHEL·LIX"));
        QCOMPARE(window->windowTitle(), QStringLiteral("ORVANIS SHEL·LIX"));
        form->show(true);
        QCOMPARE(window->windowModality(), Qt::ApplicationModal);
        form->hide();
        QVERIFY(!window->isVisible());
        form->show(false);
        QCOMPARE(window->windowModality(), Qt::NonModal);

        bool allow = false;
        form->setCloseHandler([&allow] { return allow; });
        QVERIFY(!window->close());
        QVERIFY(window->isVisible() && form->isShown());
        allow = true;
        QVERIFY(window->close());
        QVERIFY(!form->isLoaded());
    }

    void centresOverTheOtherFormsWindow() {
        Form otherForm(QStringLiteral("frmOther"), frmSample::kElements);
        QWidget other;
        other.setObjectName(QStringLiteral("frmOther"));
        other.setGeometry(300, 200, 600, 400);
        other.show();
        window->resize(200, 100);
        form->centreOver(otherForm);
        form->show();
        const QPoint offset = window->frameGeometry().center() - other.frameGeometry().center();
        QVERIFY2(offset.manhattanLength() <= 4, qPrintable(QString::number(offset.x())));
    }

    // However large a window was made, it opens inside the screen's free area, down to what
    // its layout needs, and one moved off the screen comes back.
    void opensInsideTheScreen() {
        window->resize(5000, 4000);
        window->move(3000, 2000);
        form->show();
        const QRect available = window->screen()->availableGeometry();
        const QRect frame = window->frameGeometry();
        QVERIFY(frame.width() <= available.width() && available.contains(frame.topLeft()));
        QVERIFY(frame.height() <= std::max(available.height(), window->minimumSizeHint().height()));
    }

    void escapePressesOnlyTheNamedButton() {
        window->show();
        QSignalSpy clicked(form.get(), &Form::clicked);
        QTest::keyClick(window.get(), Qt::Key_Escape);
        QVERIFY(window->isVisible() && clicked.isEmpty());
        view->setEscapeElement(QStringLiteral("cmdGo"));
        QTest::keyClick(window.get(), Qt::Key_Escape);
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(clicked.at(0).at(0).toString(), QStringLiteral("cmdGo"));
    }

private:
    std::unique_ptr<Form> form;
    std::unique_ptr<Sample> window;
    std::unique_ptr<FormView> view;
};

QTEST_MAIN(TestFormView)
#include "tst_formview.moc"
