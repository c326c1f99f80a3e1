#include "common/ui/windowparts.h"

#include "common/ui/formview.h"

#include <QAction>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStyle>

namespace {

// At least a dozen letters wide, so that short captions make buttons of one width, and never
// narrower than its caption: a fixed least width would let a tight layout cut a long one.
class CaptionButton : public QPushButton {
public:
    using QPushButton::QPushButton;

    QSize sizeHint() const override {
        const int least = fontMetrics().horizontalAdvance(QLatin1Char('x')) * 12;
        return QPushButton::sizeHint().expandedTo(QSize(least, 0));
    }
};

} // namespace

namespace windowparts {

QMenu* namedMenu(QMenuBar* bar, const QString& name) {
    QMenu* menu = bar->addMenu(QString());
    menu->setObjectName(name);
    return menu;
}

QAction* namedEntry(QMenu* menu, const QString& name, bool checkable) {
    QAction* action = menu->addAction(QString());
    action->setObjectName(name);
    action->setCheckable(checkable);
    return action;
}

QAction* namedSeparator(QMenu* menu, const QString& name) {
    QAction* separator = menu->addSeparator();
    separator->setObjectName(name);
    return separator;
}

QPushButton* button(const QString& name, bool isDefault) {
    QPushButton* result = named<CaptionButton>(name);
    result->setDefault(isDefault);
    result->setAutoDefault(isDefault);
    return result;
}

QHBoxLayout* buttonRow(std::initializer_list<QWidget*> buttons) {
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    for (QWidget* b : buttons)
        row->addWidget(b);
    return row;
}

QLabel* label(const QString& name, QWidget* parent) {
    auto* result = named<QLabel>(name, parent);
    result->setTextFormat(Qt::PlainText);
    return result;
}

QFrame* divider() {
    auto* line = new QFrame;
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}

int spacing(const QWidget* window) {
    return window->style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing, nullptr, window);
}

} // namespace windowparts
