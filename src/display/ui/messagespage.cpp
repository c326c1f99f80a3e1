#include "display/mainview_elements.h"
#include "display/ui/faultbox.h"
#include "display/ui/mainpages.h"
#include "display/ui/pageparts.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace el = frmDisplay;

namespace {

// Where each entry of the fault list stands. Bits 10, 17, 18, 19, 20 and 29 have no place of
// their own: the common entries 32 and 33 report them.
constexpr int kMainBoard[] = {0, 1, 4, 5, 6, 7, 8, 9, 11, 12, 13, 14, 15, 16, 21, 28, 30, 31};
constexpr int kDetector1[] = {2, 3, 22, 24, 25, 26, 27, 32};
constexpr int kDetector2[] = {23, 33};

template <std::size_t N>
QGroupBox* faults(PageParts& p, int frame, const int (&entries)[N]) {
    QGroupBox* box = p.frame(el::fraErr[frame]);
    auto* grid = new QGridLayout(box);
    int row = 0;
    for (const int entry : entries) {
        grid->addWidget(p.faultBox(el::picErr[entry], el::lblErr[entry]), row, 0, Qt::AlignCenter);
        grid->addWidget(p.legend(el::lblErr[entry]), row, 1);
        ++row;
    }
    grid->setColumnStretch(1, 1);
    return box;
}

QLayout* keyAndReset(PageParts& p) {
    auto* row = new QHBoxLayout;
    for (int i = 0; i < 2; ++i) {
        row->addWidget(p.faultBox(el::picErrLegend[i], el::lblErrLegend[i]));
        row->addWidget(p.legend(el::lblErrLegend[i]));
        row->addSpacing(row->spacing() * 3);
    }
    row->addStretch(1);
    QGroupBox* memory = p.frame(el::fraErrReset);
    auto* memoryRow = new QHBoxLayout(memory);
    memoryRow->addWidget(p.button(el::cmdErrReset, el::fraErrReset));
    row->addWidget(memory);
    return row;
}

} // namespace

QWidget* buildMessagesPage(PageParts& p) {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    auto* frames = new QHBoxLayout;
    auto* mainBoard = new QVBoxLayout;
    mainBoard->addWidget(faults(p, 0, kMainBoard));
    mainBoard->addStretch(1);
    frames->addLayout(mainBoard, 1);
    auto* detectors = new QVBoxLayout;
    detectors->addWidget(faults(p, 1, kDetector1));
    detectors->addWidget(faults(p, 2, kDetector2));
    detectors->addStretch(1);
    frames->addLayout(detectors, 1);
    column->addLayout(frames, 1);
    column->addLayout(keyAndReset(p));
    return page;
}
