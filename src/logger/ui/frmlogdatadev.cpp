#include "logger/ui/frmlogdatadev.h"

#include "common/ui/formview.h"
#include "common/ui/windowparts.h"
#include "logger/datalogger.h"
#include "logger/logger_elements.h"
#include "logger/ui/trendchart.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QVBoxLayout>

namespace lg = frmLogdataDev;
using windowparts::button;
using windowparts::label;

namespace {

QListWidget* list(int index, const QString& accessibleName) {
    auto* l = named<QListWidget>(lg::lstDisplay[index]);
    l->setAccessibleName(accessibleName);
    l->setUniformItemSizes(true);
    return l;
}

// A path that may be long: cut in the middle rather than pushing the window wider.
QLabel* pathLabel(const QString& name) {
    QLabel* path = label(name);
    path->setTextInteractionFlags(Qt::TextSelectableByMouse);
    path->setFrameShape(QFrame::StyledPanel);
    path->setMinimumWidth(200);
    path->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    path->setAutoFillBackground(true);
    return path;
}

} // namespace

frmLogdataDevWindow::frmLogdataDevWindow(Form& form, DataLogger& logger,
                                         std::function<QString(int)> text, QWidget* parent)
    : QWidget(parent, Qt::Window) {
    setObjectName(form.name());
    auto* top = new QHBoxLayout;
    top->addWidget(buildLists(), 2);
    top->addWidget(buildTrend(form, logger, std::move(text)), 3);

    auto* root = new QVBoxLayout(this);
    root->addLayout(top, 1);
    root->addWidget(buildRecording());
    root->addLayout(windowparts::buttonRow({button(lg::cmdClose)}));
    resize(1400, 860);
    m_view = std::make_unique<FormView>(form, this);
    m_view->setEscapeElement(lg::cmdClose);

    connect(&logger, &DataLogger::TrendExportRequested, this, [this, &logger](const QString& path) {
        logger.TrendExported(path, m_chart->exportPng(path));
    });
}

frmLogdataDevWindow::~frmLogdataDevWindow() = default;

QWidget* frmLogdataDevWindow::buildLists() {
    auto* available = named<QGroupBox>(lg::fraDataObjectsAvailable);
    QListWidget* all = list(0, QStringLiteral("Verfügbare Datenobjekte"));
    FormView::giveTickMarks(all);
    auto* availableLayout = new QVBoxLayout(available);
    availableLayout->addWidget(all);

    auto* toLog = named<QGroupBox>(lg::fraDataObjectsToLog);
    QListWidget* names = list(1, QStringLiteral("Ausgewählte Datenobjekte"));
    QListWidget* values = list(2, QStringLiteral("Werte der ausgewählten Datenobjekte"));
    // Names and values are one table in two lists: they scroll together.
    connect(names->verticalScrollBar(), &QScrollBar::valueChanged, values->verticalScrollBar(),
            &QScrollBar::setValue);
    connect(values->verticalScrollBar(), &QScrollBar::valueChanged, names->verticalScrollBar(),
            &QScrollBar::setValue);
    QFont figures = values->font();
    figures.setStyleHint(QFont::Monospace);
    figures.setFamily(QStringLiteral("monospace"));
    values->setFont(figures);
    auto* toLogLayout = new QHBoxLayout(toLog);
    toLogLayout->addWidget(names, 3);
    toLogLayout->addWidget(values, 1);

    auto* lists = new QSplitter(Qt::Vertical);
    lists->setChildrenCollapsible(false);
    lists->addWidget(available);
    lists->addWidget(toLog);
    lists->setStretchFactor(0, 3);
    lists->setStretchFactor(1, 2);
    return lists;
}

QWidget* frmLogdataDevWindow::buildTrend(Form& form, DataLogger& logger,
                                         std::function<QString(int)> text) {
    auto* trend = named<QGroupBox>(lg::fraTrend);
    QLabel* spanLegend = label(lg::lblTrendSpan);
    auto* span = named<QComboBox>(lg::cboTrendSpan);
    spanLegend->setBuddy(span);
    auto* controls = new QHBoxLayout;
    controls->addWidget(spanLegend);
    controls->addWidget(span);
    controls->addSpacing(12);
    controls->addWidget(named<QCheckBox>(lg::chkTrendPause));
    controls->addStretch(1);

    m_chart = named<TrendChart>(lg::picTrend, form, logger.Trend(), std::move(text));
    auto* layout = new QVBoxLayout(trend);
    layout->addLayout(controls);
    layout->addWidget(m_chart, 1);
    layout->addLayout(windowparts::buttonRow({button(lg::cmdTrendExport)}));
    return trend;
}

QWidget* frmLogdataDevWindow::buildRecording() {
    auto* frame = named<QGroupBox>(lg::fraAufzeichnung);
    auto* grid = new QGridLayout(frame);
    int row = 0;
    const QString files[2][4] = {
        {lg::chkSaveAsExcel, lg::cmdSaveAsExcel, lg::lblSaveAsExcelFile, lg::lblSaveAsExcelRecords},
        {lg::chkSaveAsMathCad, lg::cmdSaveAsMathCad, lg::lblSaveAsMathCadFile,
         lg::lblSaveAsMathCadRecords}};
    for (const auto& f : files) {
        grid->addWidget(named<QCheckBox>(f[0]), row++, 0, 1, 3);
        QLabel* path = pathLabel(f[2]);
        QPushButton* choose = button(f[1]);
        choose->setAccessibleDescription(
            f[0] == lg::chkSaveAsExcel.name() ? QStringLiteral(".log") : QStringLiteral(".dat"));
        grid->addWidget(choose, row, 0);
        grid->addWidget(path, row, 1);
        grid->addWidget(label(f[3]), row++, 2);
    }
    grid->setColumnStretch(1, 1);

    QLabel* running = label(lg::lblRunning);
    QFont bold = running->font();
    bold.setBold(true);
    running->setFont(bold);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(button(lg::cmdStart));
    buttons->addWidget(button(lg::cmdStop));
    buttons->addSpacing(12);
    buttons->addWidget(running);
    buttons->addStretch(1);
    grid->addLayout(buttons, row, 0, 1, 3);
    return frame;
}

#include "moc_frmlogdatadev.cpp"
