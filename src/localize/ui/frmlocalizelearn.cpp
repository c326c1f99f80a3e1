#include "localize/ui/frmlocalizelearn.h"

#include "common/colors.h"
#include "common/ui/formview.h"
#include "common/ui/windowparts.h"
#include "display/ui/accessiblenames.h"
#include "display/ui/bargraph.h"
#include "display/ui/ledlamp.h"
#include "display/ui/pageparts.h"
#include "localize/localize_elements.h"
#include "localize/ui/pipedrawing.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace ll = frmLocalizeLearn;
using Says = AccessibleNames::Says;

namespace {

// A field's colour in the key of the learn layout: a small field filled as the times are.
class KeySwatch : public QWidget {
public:
    explicit KeySwatch(std::uint32_t color)
        : m_color(color) {
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }
    QSize sizeHint() const override {
        const int line = fontMetrics().height();
        return {line * 2, line};
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        const QColor fill = modelColor(m_color, palette(), QPalette::Base);
        p.setPen(QPen(palette().color(QPalette::Mid), 1));
        p.setBrush(fill);
        p.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
    }

private:
    std::uint32_t m_color;
};

// A field as wide as its longest value, not wider.
QLineEdit* narrow(QLineEdit* field) {
    field->setMaximumWidth(field->minimumWidth());
    return field;
}

// The help buttons carry a question mark only, so they are as small as a tool button; what
// each one helps with is its description.
QToolButton* helpButton(PageParts& p, const QString& name, const QString& purpose) {
    auto* button = named<QToolButton>(name);
    p.names().addContext(button, purpose);
    return button;
}

QLabel* heading(const QString& name) {
    QLabel* label = windowparts::label(name);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    return label;
}

} // namespace

frmLocalizeLearnWindow::frmLocalizeLearnWindow(Form& form, std::function<QString(int)> text,
                                               QWidget* parent)
    : QDialog(parent)
    , m_names(std::make_unique<AccessibleNames>(form, text)) {
    setObjectName(form.name());
    PageParts p(*m_names);

    // The pipe, and under each hole its choice and transport time or its lamp.
    auto* holesBox = new QGroupBox;
    auto* holes = new QGridLayout(holesBox);
    m_pipe = new PipeDrawing(form);
    holes->addWidget(m_pipe, 0, 1, 1, kPipeHoles);
    holes->addWidget(p.legend(ll::lblLocHoleLegend), 1, 0);
    const QString legend = ll::lblLocHoleLegend;
    for (int i = 0; i < kPipeHoles; ++i) {
        const QString number = QString::number(i + 1);
        auto* cell = new QHBoxLayout;
        cell->addStretch(1);
        auto* option = named<QRadioButton>(ll::optLocHole[i]);
        // Called by its number, as it reads; the legend above the row says what it counts.
        m_names->addContext(option, legend);
        cell->addWidget(option);
        cell->addWidget(p.led(ll::picLocFirePlaceTest[i], legend, number, Says::LampState));
        cell->addWidget(p.legend(ll::lblLocPlace[i]));
        cell->addStretch(1);
        holes->addLayout(cell, 1, i + 1);
        holes->setColumnStretch(i + 1, 1);
    }
    for (int i = 0; i < kPipeHoles; ++i) {
        auto* cell = new QHBoxLayout;
        cell->addStretch(1);
        cell->addWidget(narrow(
            p.field(ll::txtLocTime[i], legend, QStringLiteral("888.8"), QString::number(i + 1))));
        cell->addWidget(p.unit(ll::lblLocTimeUnit[i]));
        cell->addStretch(1);
        holes->addLayout(cell, 2, i + 1);
    }
    holes->addWidget(helpButton(p, ll::cmdLocalizationHelp[0], legend), 2, kPipeHoles + 1);
    // Every hole keeps its column when the pipe is shorter, so that the holes stand under
    // their places on the pipe; rows keep their height when a layout hides their cells.
    const int line = fontMetrics().height();
    for (int i = 0; i < kPipeHoles; ++i)
        holes->setColumnMinimumWidth(i + 1, line * 5);
    holes->setRowMinimumHeight(1, line * 3 / 2);

    // The parameters written with the windows.
    auto* settings = new QGridLayout;
    auto settingRow = [&](int row, const QString& legendName, const QString& field,
                          const QString& unit, const QString& widest) {
        QLabel* caption = p.legend(legendName);
        settings->addWidget(caption, row, 0);
        QLineEdit* edit = narrow(p.field(field, legendName, widest));
        caption->setBuddy(edit);
        settings->addWidget(edit, row, 1);
        if (!unit.isEmpty()) settings->addWidget(p.unit(unit), row, 2);
    };
    settingRow(0, ll::lblLocNumberOfHolesLegend, ll::txtLocNumberOfHoles, {}, QStringLiteral("8"));
    settings->addWidget(helpButton(p, ll::cmdLocalizationHelp[1], ll::lblLocNumberOfHolesLegend), 0,
                        3);
    settingRow(1, ll::lblBlowTimeLegend, ll::txtBlowTime, ll::lblBlowTimeUnit,
               QStringLiteral("888"));
    settingRow(2, ll::lblSuckFanVoltageLegend, ll::txtSuckFanVoltage, ll::lblSuckFanVoltageUnit,
               QStringLiteral("88.8"));
    settingRow(3, ll::lblBlowFanVoltageLegend, ll::txtBlowFanVoltage, ll::lblBlowFanVoltageUnit,
               QStringLiteral("88.8"));
    settings->setColumnStretch(4, 1);

    // One measurement: its blow time, start or abort, and the windows written.
    auto* single = new QGroupBox;
    auto* singleColumn = new QVBoxLayout(single);
    auto* headings = new QGridLayout;
    headings->addWidget(heading(ll::lblLocSingleHoleLearningLegend), 0, 0);
    headings->addWidget(heading(ll::lblLocSingleHoleTestLegend), 0, 0);
    headings->addWidget(
        helpButton(p, ll::cmdLocalizationHelp[2], ll::lblLocSingleHoleLearningLegend), 0, 1);
    headings->setColumnStretch(0, 1);
    singleColumn->addLayout(headings);
    auto* blowTime = new QHBoxLayout;
    QLabel* temporary = p.legend(ll::lblLocTemporaryBlowTimeLegend);
    blowTime->addWidget(temporary);
    QLineEdit* minutes = narrow(p.field(ll::txtLocTemporaryBlowTimeMinutes,
                                        ll::lblLocTemporaryBlowTimeLegend, QStringLiteral("88")));
    temporary->setBuddy(minutes);
    blowTime->addWidget(minutes);
    blowTime->addWidget(p.unit(ll::lblLocTemporaryBlowTimeMinutesUnit));
    blowTime->addWidget(narrow(p.field(ll::txtLocTemporaryBlowTimeSeconds,
                                       ll::lblLocTemporaryBlowTimeLegend, QStringLiteral("88"))));
    blowTime->addWidget(p.unit(ll::lblLocTemporaryBlowTimeSecondsUnit));
    blowTime->addStretch(1);
    singleColumn->addLayout(blowTime);
    auto* buttons = new QHBoxLayout;
    // Start and abort share one spot: only one of them shows.
    auto* startOrAbort = new QGridLayout;
    // The window's own Cancel closes it; this one ends the learning.
    QPushButton* abortLearning = windowparts::button(ll::cmdLocSingleHoleLearningAbort);
    m_names->addContext(abortLearning, ll::lblLocSingleHoleLearningLegend);
    startOrAbort->addWidget(windowparts::button(ll::cmdLocSingleHoleLearningStart), 0, 0);
    startOrAbort->addWidget(abortLearning, 0, 0);
    buttons->addLayout(startOrAbort);
    buttons->addWidget(windowparts::button(ll::cmdLocParameterAssume));
    buttons->addStretch(1);
    singleColumn->addLayout(buttons);

    // The lamps of learn or test mode and of a running measurement.
    auto* lamps = new QGridLayout;
    lamps->addWidget(p.led(ll::picLocLearnModeLED, ll::lblLocLearnModeLEDLegend), 0, 0);
    lamps->addWidget(p.legend(ll::lblLocLearnModeLEDLegend), 0, 1);
    lamps->addWidget(p.legend(ll::lblLocTestModeLEDLegend), 0, 1);
    lamps->addWidget(p.led(ll::picLocLearnActivLED, ll::lblLocLearnActivLEDLegend), 1, 0);
    lamps->addWidget(p.legend(ll::lblLocLearnActivLEDLegend), 1, 1);
    lamps->setColumnStretch(1, 1);

    // The keys of the colours: of the time fields in the learn layout, of the lamps in the
    // test layout.
    QGroupBox* learnKey = p.frame(ll::fraLocLernModeLegend);
    auto* learnKeyColumn = new QVBoxLayout(learnKey);
    auto* learnSwatches = named<QWidget>(ll::picLocLearnMode);
    auto* learnGrid = new QGridLayout(learnSwatches);
    learnGrid->setContentsMargins(0, 0, 0, 0);
    const std::uint32_t learnColors[] = {colors::kWindowBackground, colors::kGreen,
                                         colors::kYellow};
    for (int i = 0; i < 3; ++i) {
        learnGrid->addWidget(new KeySwatch(learnColors[i]), i, 0);
        learnGrid->addWidget(p.legend(ll::lblLocLearnModeLegend[i]), i, 1);
    }
    learnKeyColumn->addWidget(learnSwatches);
    QGroupBox* testKey = p.frame(ll::fraLocTestModeLegend);
    auto* testKeyColumn = new QVBoxLayout(testKey);
    auto* testSwatches = named<QWidget>(ll::picLocTestMode);
    auto* testGrid = new QGridLayout(testSwatches);
    testGrid->setContentsMargins(0, 0, 0, 0);
    const std::uint32_t testColors[] = {colors::kWindowBackground, colors::kRed};
    for (int i = 0; i < 2; ++i) {
        auto* lamp = new LedLamp;
        lamp->setBackColor(testColors[i]);
        m_names->add(lamp, ll::lblLocTestModeLegend[i], ll::lblLocTestModeLegend[i]);
        testGrid->addWidget(lamp, i, 0);
        testGrid->addWidget(p.legend(ll::lblLocTestModeLegend[i]), i, 1);
    }
    testKeyColumn->addWidget(testSwatches);
    auto* keys = new QGridLayout;
    keys->addWidget(learnKey, 0, 0);
    keys->addWidget(testKey, 0, 0);

    auto* left = new QVBoxLayout;
    left->addWidget(holesBox);
    left->addLayout(settings);
    left->addWidget(single);
    auto* lower = new QHBoxLayout;
    lower->addLayout(lamps, 1);
    lower->addLayout(keys);
    left->addLayout(lower);
    left->addStretch(1);

    // The live smoke level, to see the test smoke arrive.
    auto* right = new QVBoxLayout;
    right->addWidget(p.legend(ll::lblLocSmokeLevelLegend), 0, Qt::AlignHCenter);
    auto* bars = new QHBoxLayout;
    for (int d = 0; d < 2; ++d)
        bars->addWidget(
            p.barGraph(ll::ctlSmokeLevel[d], ll::lblLocSmokeLevelLegend, QString::number(d + 1)));
    right->addLayout(bars, 1);

    auto* top = new QHBoxLayout;
    top->addLayout(left, 1);
    top->addLayout(right);

    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(16, 16, 16, 14);
    root->setSpacing(12);
    root->addLayout(top, 1);
    root->addWidget(p.waitingNote(ll::lblLocWaiting));
    root->addLayout(windowparts::buttonRow({windowparts::button(ll::cmdLocParameterAbort)}));

    // The pipe is named in the window's language, which the legend beside it follows.
    auto namePipe = [this, text] { m_pipe->setAccessibleName(text(521)); };
    namePipe();
    connect(&form, &Form::elementChanged, this,
            [namePipe](const QString& element, ElementProperty property) {
                if (element == ll::lblLocHoleLegend && property == ElementProperty::Caption)
                    namePipe();
            });

    m_view = std::make_unique<FormView>(form, this);
    m_view->setEscapeElement(ll::cmdLocParameterAbort);
}

frmLocalizeLearnWindow::~frmLocalizeLearnWindow() = default;

#include "moc_frmlocalizelearn.cpp"
