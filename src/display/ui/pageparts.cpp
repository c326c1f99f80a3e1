#include "display/ui/pageparts.h"

#include "common/ui/formview.h"
#include "common/ui/windowparts.h"
#include "display/ui/bargraph.h"
#include "display/ui/extgauge.h"
#include "display/ui/faultbox.h"
#include "display/ui/ledlamp.h"
#include "display/ui/relayelement.h"
#include "display/ui/unitlabel.h"
#include "display/ui/updown.h"
#include "engine/settingtable.h"

#include <algorithm>

#include <QCheckBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QToolButton>

using Says = AccessibleNames::Says;

// Most user-interface fonts draw their figures at one width; where the font in use does
// not, the system's fixed font keeps the columns still.
QFont valueFont(const QFont& base) {
    const QFontMetrics metrics(base);
    if (metrics.horizontalAdvance(QStringLiteral("1111")) ==
        metrics.horizontalAdvance(QStringLiteral("8888")))
        return base;
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPointSizeF(base.pointSizeF());
    return fixed;
}

PageParts::PageParts(AccessibleNames& names)
    : m_names(names) {}

void PageParts::mirror(QObject* widget) {
    const QString element = widget->objectName();
    widget->setObjectName(QString());
    FormView::mirror(widget, element);
    if (auto* w = qobject_cast<QWidget*>(widget)) {
        w->setFocusPolicy(Qt::NoFocus);
        w->setAttribute(Qt::WA_TransparentForMouseEvents);
    }
}

QGroupBox* PageParts::frame(const QString& name) {
    return named<QGroupBox>(name);
}

QWidget* PageParts::part(const QString& name, QGridLayout** grid) {
    auto* widget = named<QWidget>(name);
    *grid = new QGridLayout(widget);
    (*grid)->setContentsMargins(0, 0, 0, 0);
    return widget;
}

QLabel* PageParts::legend(const QString& name) {
    return windowparts::label(name);
}

QLabel* PageParts::value(const QString& name, const QString& legendName, const QString& widest,
                         const QString& suffix) {
    QLabel* label = windowparts::label(name);
    label->setFont(valueFont(label->font()));
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setMinimumWidth(label->fontMetrics().horizontalAdvance(widest) +
                           label->fontMetrics().averageCharWidth());
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // Opaque, so that a new value repaints the label alone and not the page beneath it.
    label->setAutoFillBackground(true);
    m_names.add(label, name, legendName, suffix, Says::Value);
    return label;
}

// Units take one width, that of the widest unit of the settings, so that the values of
// separate grids line up.
UnitLabel* PageParts::unit(const QString& name) {
    static const QStringList units = [] {
        QStringList all;
        for (const SettingDescriptor& s : settingTable())
            for (int field = 0; field < s.fieldCount(); ++field)
                all << s.unitText(field);
        all.removeDuplicates();
        return all;
    }();
    auto* label = named<UnitLabel>(name);
    label->setTextFormat(Qt::PlainText);
    label->setForegroundRole(QPalette::PlaceholderText);
    label->setPeers(units);
    return label;
}

LedLamp* PageParts::led(const QString& name, const QString& legendName, const QString& suffix,
                        Says says) {
    auto* lamp = named<LedLamp>(name);
    m_names.add(lamp, name, legendName, suffix, says);
    return lamp;
}

FaultBox* PageParts::faultBox(const QString& name, const QString& legendName) {
    auto* box = named<FaultBox>(name);
    m_names.add(box, name, legendName, {}, Says::FaultState);
    return box;
}

RelayElement* PageParts::relay(const QString& name, const QString& legendName,
                               const QString& suffix) {
    auto* relay = named<RelayElement>(name);
    m_names.add(relay, name, legendName, suffix, Says::RelayState);
    return relay;
}

ExtGauge* PageParts::gauge(const QString& name, const QString& legendName, const QString& suffix) {
    auto* gauge = named<ExtGauge>(name);
    m_names.add(gauge, name, legendName, suffix);
    return gauge;
}

BarGraph* PageParts::barGraph(const QString& name, const QString& legendName,
                              const QString& suffix) {
    auto* bar = named<BarGraph>(name);
    m_names.add(bar, name, legendName, suffix);
    return bar;
}

QPushButton* PageParts::button(const QString& name, const QString& purpose, const QString& suffix) {
    QPushButton* button = windowparts::button(name);
    button->setAutoDefault(false);
    // A button is called by its caption; what it acts on, where the caption ("Reset") does
    // not say, is its description.
    if (!purpose.isEmpty()) m_names.addContext(button, purpose, suffix);
    return button;
}

namespace {

// A tick box that only shows: drawn as every read-only tick of the window is, greyed like
// the boxes that the logic disables while a page is only viewed, yet not reported as
// unavailable to assistive tools.
class ReadOnlyCheck : public QCheckBox {
public:
    using QCheckBox::QCheckBox;

protected:
    void paintEvent(QPaintEvent*) override {
        QStylePainter painter(this);
        QStyleOptionButton option;
        initStyleOption(&option);
        option.state &= ~QStyle::State_Enabled;
        option.palette.setCurrentColorGroup(QPalette::Disabled);
        painter.drawControl(QStyle::CE_CheckBox, option);
    }
};

} // namespace

QCheckBox* PageParts::shownCheck(const QString& name, const QString& legendName,
                                 const QString& suffix) {
    auto* box = named<ReadOnlyCheck>(name);
    m_names.add(box, name, legendName, suffix);
    box->setAttribute(Qt::WA_TransparentForMouseEvents);
    box->setFocusPolicy(Qt::NoFocus);
    return box;
}

QCheckBox* PageParts::check(const QString& name, const QString& legendName, const QString& suffix,
                            const QString& columnLegend) {
    auto* box = named<QCheckBox>(name);
    m_names.add(box, name, legendName, suffix, Says::Nothing, columnLegend);
    return box;
}

QRadioButton* PageParts::option(const QString& name, const QString& legendName,
                                const QString& columnLegend) {
    auto* option = named<QRadioButton>(name);
    m_names.add(option, name, legendName, {}, Says::Nothing, columnLegend);
    return option;
}

QLineEdit* PageParts::field(const QString& name, const QString& legendName, const QString& widest,
                            const QString& suffix) {
    auto* field = named<QLineEdit>(name);
    field->setFont(valueFont(field->font()));
    field->setAlignment(Qt::AlignRight);
    field->setMinimumWidth(field->fontMetrics().horizontalAdvance(widest + QStringLiteral("00")));
    m_names.add(field, name, legendName, suffix);
    return field;
}

UpDown* PageParts::upDown(const QString& name, const QString& legendName, const QString& suffix) {
    auto* upDown = named<UpDown>(name);
    m_names.add(upDown, name, legendName, suffix);
    return upDown;
}

QLabel* PageParts::waitingNote(const QString& name) {
    QLabel* note = windowparts::label(name);
    note->setWordWrap(true);
    QFont italic = note->font();
    italic.setItalic(true);
    note->setFont(italic);
    return note;
}

void PageParts::settingRow(QGridLayout* grid, int row, const QString& legendName,
                           const QString& label, const QString& fieldName,
                           const QString& upDownName, const QString& unitName,
                           const QString& widest, const QString& suffix) {
    QLabel* caption = legend(legendName);
    grid->addWidget(caption, row, 0);
    settingCells(grid, row, 1, legendName, label, fieldName, upDownName, unitName, widest, suffix);
    caption->setBuddy(grid->itemAtPosition(row, 1)->widget());
}

void PageParts::settingCells(QGridLayout* grid, int row, int column, const QString& legendName,
                             const QString& label, const QString& fieldName,
                             const QString& upDownName, const QString& unitName,
                             const QString& widest, const QString& suffix) {
    // The label and its field share one spot: viewing shows the one, editing the other.
    QLineEdit* input = field(fieldName, legendName, widest, suffix);
    QLabel* shown = value(label, legendName, widest, suffix);
    grid->addWidget(input, row, column);
    grid->addWidget(shown, row, column);
    UpDown* steps = upDown(upDownName, legendName, suffix);
    steps->driveFrom(input);
    // The arrows say which way they step and, with the unit, which value: the minutes and
    // seconds of one setting share their legend.
    m_names.addCaptioned(steps->upArrow(), AccessibleNames::kStepUp, legendName, suffix, unitName);
    m_names.addCaptioned(steps->downArrow(), AccessibleNames::kStepDown, legendName, suffix,
                         unitName);
    grid->addWidget(steps, row, column + 1);
    UnitLabel* unitLabel = unit(unitName);
    unitLabel->follow(shown, input);
    grid->addWidget(unitLabel, row, column + 2);
}

void PageParts::switchRow(QGridLayout* grid, int row, const QString& legendName,
                          const QString& shown, const QString& copy, const QString& suffix) {
    grid->addWidget(legend(legendName), row, 0);
    grid->addWidget(shownCheck(shown, legendName, suffix), row, 1, Qt::AlignRight);
    grid->addWidget(check(copy, legendName, suffix), row, 1, Qt::AlignRight);
    // The tick stands in the column of the values, before the units.
    QLabel* noUnit = unit(QString());
    grid->addWidget(noUnit, row, 3);
}

void PageParts::reserveSmokeWidth(QLabel* label) {
    const QFontMetrics metrics = label->fontMetrics();
    label->setMinimumWidth(std::max(metrics.horizontalAdvance(QStringLiteral("-888.888 %/ft")),
                                    metrics.horizontalAdvance(QStringLiteral("-888.888 %/m"))));
}
