#include "common/ui/formview.h"

#include "common/ui/accessibility.h"
#include "common/ui/colorbox.h"
#include "common/ui/elementwidget.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <optional>

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QRadioButton>
#include <QScreen>
#include <QSpinBox>
#include <QStyle>
#include <QTabWidget>

namespace {

struct SystemColor {
    std::uint32_t index;
    QPalette::ColorRole role;
};

// The system colours the tool uses, and a few neighbours, by the palette role that plays
// their part on this desktop.
constexpr SystemColor kSystemColors[] = {
    {0x01, QPalette::Window},
    {0x05, QPalette::Base},
    {0x08, QPalette::Text},
    {0x0D, QPalette::Highlight},
    {0x0E, QPalette::HighlightedText},
    {0x0F, QPalette::Button},
    {0x10, QPalette::Mid},
    {0x12, QPalette::ButtonText},
    {0x14, QPalette::Light},
    {0x17, QPalette::ToolTipText},
    {0x18, QPalette::ToolTipBase},
};

int toInt(double value, int fallback) {
    if (std::isnan(value)) return fallback;
    return static_cast<int>(std::clamp(std::round(value), double(INT_MIN), double(INT_MAX)));
}

struct TabPage {
    QTabWidget* tabs;
    int index;
};

// A page of a tab widget sits in the tab widget's stack.
std::optional<TabPage> tabPageOf(QObject* target) {
    auto* page = qobject_cast<QWidget*>(target);
    if (!page || !page->parentWidget()) return std::nullopt;
    auto* tabs = qobject_cast<QTabWidget*>(page->parentWidget()->parentWidget());
    const int index = tabs ? tabs->indexOf(page) : -1;
    if (index < 0) return std::nullopt;
    return TabPage{tabs, index};
}

bool isField(const QWidget* w) {
    if (auto* combo = qobject_cast<const QComboBox*>(w)) return combo->isEditable();
    return qobject_cast<const QLineEdit*>(w) || qobject_cast<const QAbstractScrollArea*>(w) ||
           qobject_cast<const QAbstractSpinBox*>(w);
}

bool isPushButton(const QWidget* w) {
    return (qobject_cast<const QAbstractButton*>(w) && !qobject_cast<const QCheckBox*>(w) &&
            !qobject_cast<const QRadioButton*>(w)) ||
           qobject_cast<const QComboBox*>(w);
}

QPalette::ColorRole colorRole(const QWidget* w, bool background) {
    if (isField(w)) return background ? QPalette::Base : QPalette::Text;
    if (isPushButton(w)) return background ? QPalette::Button : QPalette::ButtonText;
    return background ? QPalette::Window : QPalette::WindowText;
}

bool differsFromDesign(const Element& e, ElementProperty property) {
    static const Element design;
    switch (property) {
    case ElementProperty::Caption:
        return e.caption != design.caption;
    case ElementProperty::Value:
        return e.value != design.value;
    case ElementProperty::Range:
        return e.minimum != design.minimum || e.maximum != design.maximum ||
               e.centre != design.centre || e.step != design.step;
    case ElementProperty::Visible:
        return e.visible != design.visible;
    case ElementProperty::Enabled:
        return e.enabled != design.enabled;
    case ElementProperty::BackColor:
        return e.backColor != design.backColor;
    case ElementProperty::ForeColor:
        return e.foreColor != design.foreColor;
    case ElementProperty::ToolTip:
        return e.toolTip != design.toolTip;
    case ElementProperty::Items:
        return e.items != design.items;
    case ElementProperty::Ticks:
        return e.ticks != design.ticks;
    case ElementProperty::Top:
        return e.top != design.top;
    case ElementProperty::Left:
        return e.left != design.left;
    case ElementProperty::Dot:
        return e.dotColor != design.dotColor;
    case ElementProperty::MousePointer:
        return e.mousePointer != design.mousePointer;
    }
    return false;
}

class ApplyingScope {
public:
    explicit ApplyingScope(bool& flag)
        : m_flag(flag)
        , m_before(flag) {
        m_flag = true;
    }
    ~ApplyingScope() { m_flag = m_before; }

private:
    bool& m_flag;
    bool m_before;
};

Qt::CheckState tickOf(const Element& e, qsizetype row) {
    return row < e.ticks.size() && e.ticks[row] ? Qt::Checked : Qt::Unchecked;
}

// A window opens no larger than the free area of its screen, less the frame the window
// manager adds, so that its buttons stay in reach on a laptop screen; a layout that needs
// more than that is the window's own fault and shows as such.
void fitToScreen(QWidget* window) {
    QScreen* screen = window->screen();
    if (!screen) return;
    window->ensurePolished();
    if (QLayout* layout = window->layout()) layout->activate();
    QSize frame = window->frameGeometry().size() - window->geometry().size();
    if (frame.height() <= 0)
        frame = QSize(0, window->style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, window));
    const QRect available = screen->availableGeometry();
    const QSize room = available.size() - frame;
    const QSize wanted =
        window->testAttribute(Qt::WA_Resized) ? window->size() : window->sizeHint();
    if (wanted.width() > room.width() || wanted.height() > room.height())
        window->resize(wanted.boundedTo(room).expandedTo(window->minimumSizeHint()));
    if (!window->testAttribute(Qt::WA_Moved)) return;
    const QSize size = window->size() + frame;
    QPoint topLeft = window->pos();
    topLeft.setX(std::clamp(topLeft.x(), available.left(),
                            std::max(available.left(), available.right() + 1 - size.width())));
    topLeft.setY(std::clamp(topLeft.y(), available.top(),
                            std::max(available.top(), available.bottom() + 1 - size.height())));
    window->move(topLeft);
}

} // namespace

void FormView::giveTickMarks(QListWidget* list) {
    list->setProperty("mq27TickMarks", true);
}

bool FormView::hasTickMarks(const QListWidget* list) {
    return list->property("mq27TickMarks").toBool();
}

void FormView::mirror(QObject* widget, const QString& element) {
    widget->setProperty("mq27Mirrors", element);
}

QColor modelColor(std::uint32_t color, const QPalette& own, QPalette::ColorRole ownRole) {
    if (color == colors::kDefault) return own.color(ownRole);
    if (colors::isSystemColor(color)) {
        for (const SystemColor& system : kSystemColors)
            if (system.index == (color & 0xFFu)) return own.color(system.role);
        return own.color(ownRole);
    }
    return QColor(color & 0xFFu, (color >> 8) & 0xFFu, (color >> 16) & 0xFFu);
}

FormView::FormView(Form& form, QWidget* window)
    : QObject()
    , m_form(form)
    , m_window(window) {
    collectTargets();
    connect(&m_form, &Form::elementChanged, this, &FormView::applyElement);
    connect(&m_form, &Form::windowChanged, this, &FormView::applyWindow);
    m_window->installEventFilter(this);
    applyAll();
}

void FormView::collectTargets() {
    const auto objects = m_window->findChildren<QObject*>();
    for (QObject* object : objects) {
        if (const QString shown = object->property("mq27Mirrors").toString(); !shown.isEmpty()) {
            m_mirrors.insert(shown, object);
            continue;
        }
        const QString name = object->objectName();
        if (name.isEmpty() || name.startsWith(QLatin1String("qt_")) || m_targets.contains(name))
            continue;
        m_targets.insert(name, object);
        connectInput(name, object);
    }
}

void FormView::connectInput(const QString& name, QObject* target) {
    // Labels and drawn elements answer mouse buttons (context help).
    auto* drawn = dynamic_cast<ElementWidget*>(target);
    if (qobject_cast<QLabel*>(target) || qobject_cast<ColorBox*>(target) || drawn) {
        m_mouseTargets.insert(target, name);
        target->installEventFilter(this);
    }
    if (drawn) drawn->reportValuesTo([this, name](double value) { reportValue(name, value); });
    if (auto* action = qobject_cast<QAction*>(target)) {
        connect(action, &QAction::toggled, this, [this, name](bool on) { reportValue(name, on); });
        connect(action, &QAction::triggered, this, [this, name] { m_form.click(name); });
    } else if (auto* button = qobject_cast<QAbstractButton*>(target)) {
        connect(button, &QAbstractButton::toggled, this,
                [this, name](bool on) { reportValue(name, on); });
        connect(button, &QAbstractButton::clicked, this, [this, name] { m_form.click(name); });
    } else if (auto* combo = qobject_cast<QComboBox*>(target)) {
        connect(combo, &QComboBox::activated, this,
                [this, name](int index) { reportValue(name, index); });
    } else if (auto* list = qobject_cast<QListWidget*>(target)) {
        // The selected row counts, not the current one: assistive tools select a row without
        // moving the keyboard's current row.
        connect(list, &QListWidget::itemSelectionChanged, this, [this, name, list] {
            const QList<QListWidgetItem*> selected = list->selectedItems();
            reportValue(name, selected.isEmpty() ? -1 : list->row(selected.first()));
        });
        connect(list, &QListWidget::itemDoubleClicked, this,
                [this, name] { m_form.doubleClick(name); });
        connect(list, &QListWidget::itemChanged, this, [this, name, list](QListWidgetItem* item) {
            if (!m_applying && hasTickMarks(list))
                m_form.userSetTicked(name, list->row(item), item->checkState() == Qt::Checked);
        });
    } else if (auto* tabs = qobject_cast<QTabWidget*>(target)) {
        connect(tabs, &QTabWidget::currentChanged, this,
                [this, name](int index) { reportValue(name, index); });
    } else if (auto* line = qobject_cast<QLineEdit*>(target)) {
        // Every change of the text, not only typing: paste, undo, a drop and assistive tools
        // (which set the text as a program does) must reach the model before a button acts.
        // The view's own changes are dropped while it applies the model.
        connect(line, &QLineEdit::textChanged, this,
                [this, name](const QString& text) { reportCaption(name, text); });
    } else if (auto* text = qobject_cast<QPlainTextEdit*>(target)) {
        connect(text, &QPlainTextEdit::textChanged, this,
                [this, name, text] { reportCaption(name, text->toPlainText()); });
    } else if (auto* spin = qobject_cast<QSpinBox*>(target)) {
        connect(spin, &QSpinBox::valueChanged, this,
                [this, name](int value) { reportValue(name, value); });
    } else if (auto* spin = qobject_cast<QDoubleSpinBox*>(target)) {
        connect(spin, &QDoubleSpinBox::valueChanged, this,
                [this, name](double value) { reportValue(name, value); });
    }
}

void FormView::reportValue(const QString& name, double value) {
    if (!m_applying) m_form.userSetValue(name, value);
}

void FormView::reportMouse(const QString& name, Qt::MouseButton button) {
    const int code = button == Qt::LeftButton     ? 1
                     : button == Qt::RightButton  ? 2
                     : button == Qt::MiddleButton ? 4
                                                  : 0;
    if (code != 0) m_form.mouseClick(name, code);
}

void FormView::reportCaption(const QString& name, const QString& caption) {
    if (!m_applying) m_form.userSetCaption(name, caption);
}

FormView::Applier FormView::applierFor(ElementProperty property) {
    switch (property) {
    case ElementProperty::Caption:
        return &FormView::applyCaption;
    case ElementProperty::Value:
        return &FormView::applyValue;
    case ElementProperty::Range:
        return &FormView::applyRange;
    case ElementProperty::Visible:
        return &FormView::applyVisible;
    case ElementProperty::Enabled:
        return &FormView::applyEnabled;
    case ElementProperty::BackColor:
        return &FormView::applyBackColor;
    case ElementProperty::ForeColor:
        return &FormView::applyForeColor;
    case ElementProperty::ToolTip:
        return &FormView::applyToolTip;
    case ElementProperty::Items:
        return &FormView::applyItems;
    case ElementProperty::Ticks:
        return &FormView::applyTicks;
    case ElementProperty::Left:
        return &FormView::applyLeft;
    case ElementProperty::MousePointer:
        return &FormView::applyMousePointer;
    case ElementProperty::Top:
    case ElementProperty::Dot:
        return &FormView::applyNothing;
    }
    return &FormView::applyNothing;
}

void FormView::applyAll() {
    // Items and range first, so that a value finds its entry and its limits.
    static constexpr ElementProperty kOrder[] = {
        ElementProperty::Items,   ElementProperty::Ticks,       ElementProperty::Range,
        ElementProperty::Value,   ElementProperty::Caption,     ElementProperty::Visible,
        ElementProperty::Enabled, ElementProperty::BackColor,   ElementProperty::ForeColor,
        ElementProperty::ToolTip, ElementProperty::Top,         ElementProperty::Left,
        ElementProperty::Dot,     ElementProperty::MousePointer};
    for (const QString& name : m_form.elementNames()) {
        const Element& e = m_form.element(name);
        for (ElementProperty property : kOrder)
            if (differsFromDesign(e, property)) applyElement(name, property);
    }
    applyWindow(Form::WindowChange::Title);
    if (m_form.isShown()) showWindow();
}

void FormView::applyElement(const QString& name, ElementProperty property) {
    QObject* target = m_targets.value(name).data();
    const bool mirrored = !m_mirrors.isEmpty() && m_mirrors.contains(name);
    if (!target && !mirrored) return;
    ApplyingScope applying(m_applying);
    const Element& e = m_form.element(name);
    const bool generic =
        property == ElementProperty::Visible || property == ElementProperty::Enabled ||
        property == ElementProperty::ToolTip || property == ElementProperty::MousePointer;
    auto apply = [&](QObject* to) {
        if (auto* drawn = dynamic_cast<ElementWidget*>(to); drawn && !generic)
            drawn->applyElement(e, property);
        else
            (this->*applierFor(property))(to, e);
    };
    if (target) apply(target);
    if (!mirrored) return;
    for (auto it = m_mirrors.constFind(name); it != m_mirrors.cend() && it.key() == name; ++it)
        if (QObject* to = it.value().data()) apply(to);
}

void FormView::applyCaption(QObject* target, const Element& e) {
    const QString& text = e.caption;
    if (auto page = tabPageOf(target)) {
        page->tabs->setTabText(page->index, accessibility::literal(text));
        assignMnemonics();
    } else if (auto* label = qobject_cast<QLabel*>(target)) {
        // A label that leads to a field reads '&' as a mnemonic, as buttons do.
        label->setText(label->buddy() ? accessibility::literal(text) : text);
        if (label->buddy()) assignMnemonics();
    } else if (auto* button = qobject_cast<QAbstractButton*>(target)) {
        // The model keeps the plain caption; only the widget carries the mnemonic.
        button->setText(accessibility::literal(text));
        assignMnemonics();
    } else if (auto* line = qobject_cast<QLineEdit*>(target)) {
        if (line->text() != text) line->setText(text);
    } else if (auto* edit = qobject_cast<QPlainTextEdit*>(target)) {
        if (edit->toPlainText() != text) edit->setPlainText(text);
    } else if (auto* frame = qobject_cast<QGroupBox*>(target)) {
        frame->setTitle(text);
    } else if (auto* menu = qobject_cast<QMenu*>(target)) {
        menu->setTitle(accessibility::literal(text));
        assignMnemonics();
    } else if (auto* action = qobject_cast<QAction*>(target)) {
        action->setText(accessibility::literal(text));
        assignMnemonics();
    }
}

// A dialog's few captions are marked at once; a window of many pages once after a change
// of its captions, which comes caption by caption.
void FormView::assignMnemonics() {
    if (qobject_cast<QDialog*>(m_window)) {
        accessibility::assignMnemonics(m_window);
        return;
    }
    if (m_mnemonicsQueued) return;
    m_mnemonicsQueued = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_mnemonicsQueued = false;
            if (m_window) accessibility::assignMnemonics(m_window);
        },
        Qt::QueuedConnection);
}

void FormView::applyValue(QObject* target, const Element& e) {
    const int index = toInt(e.value, -1);
    if (auto* button = qobject_cast<QAbstractButton*>(target)) {
        if (button->isCheckable()) button->setChecked(e.value != 0);
    } else if (auto* action = qobject_cast<QAction*>(target)) {
        if (action->isCheckable()) action->setChecked(e.value != 0);
    } else if (auto* combo = qobject_cast<QComboBox*>(target)) {
        combo->setCurrentIndex(index);
    } else if (auto* list = qobject_cast<QListWidget*>(target)) {
        list->setCurrentRow(index, QItemSelectionModel::ClearAndSelect);
    } else if (auto* tabs = qobject_cast<QTabWidget*>(target)) {
        tabs->setCurrentIndex(index);
    } else if (auto* spin = qobject_cast<QSpinBox*>(target)) {
        spin->setValue(toInt(e.value, 0));
    } else if (auto* spin = qobject_cast<QDoubleSpinBox*>(target)) {
        if (!std::isnan(e.value)) spin->setValue(e.value);
    } else if (auto* bar = qobject_cast<QProgressBar*>(target)) {
        bar->setValue(toInt(e.value, 0));
    } else if (auto* slider = qobject_cast<QAbstractSlider*>(target)) {
        slider->setValue(toInt(e.value, 0));
    }
}

void FormView::applyRange(QObject* target, const Element& e) {
    const int minimum = toInt(e.minimum, 0);
    const int maximum = toInt(e.maximum, 0);
    if (auto* spin = qobject_cast<QSpinBox*>(target)) {
        spin->setRange(minimum, maximum);
        spin->setSingleStep(std::max(1, toInt(e.step, 1)));
    } else if (auto* spin = qobject_cast<QDoubleSpinBox*>(target)) {
        if (std::isnan(e.minimum) || std::isnan(e.maximum)) return;
        spin->setRange(e.minimum, e.maximum);
        if (e.step > 0) spin->setSingleStep(e.step);
    } else if (auto* bar = qobject_cast<QProgressBar*>(target)) {
        bar->setRange(minimum, maximum);
    } else if (auto* slider = qobject_cast<QAbstractSlider*>(target)) {
        slider->setRange(minimum, maximum);
        slider->setSingleStep(std::max(1, toInt(e.step, 1)));
    }
}

void FormView::applyVisible(QObject* target, const Element& e) {
    if (auto page = tabPageOf(target)) {
        page->tabs->setTabVisible(page->index, e.visible);
    } else if (auto* menu = qobject_cast<QMenu*>(target)) {
        menu->menuAction()->setVisible(e.visible);
    } else if (auto* action = qobject_cast<QAction*>(target)) {
        action->setVisible(e.visible);
    } else if (auto* widget = qobject_cast<QWidget*>(target)) {
        widget->setVisible(e.visible);
    }
}

void FormView::applyEnabled(QObject* target, const Element& e) {
    if (auto page = tabPageOf(target)) {
        page->tabs->setTabEnabled(page->index, e.enabled);
    } else if (auto* menu = qobject_cast<QMenu*>(target)) {
        menu->menuAction()->setEnabled(e.enabled);
    } else if (auto* action = qobject_cast<QAction*>(target)) {
        action->setEnabled(e.enabled);
    } else if (auto* widget = qobject_cast<QWidget*>(target)) {
        widget->setEnabled(e.enabled);
    }
}

void FormView::applyBackColor(QObject* target, const Element& e) {
    applyColor(target, e.backColor, true);
}

void FormView::applyForeColor(QObject* target, const Element& e) {
    applyColor(target, e.foreColor, false);
}

void FormView::applyColor(QObject* target, std::uint32_t color, bool background) {
    if (auto* box = qobject_cast<ColorBox*>(target)) {
        background ? box->setBackColor(color) : box->setForeColor(color);
        return;
    }
    auto* widget = qobject_cast<QWidget*>(target);
    if (!widget) return;
    const QPalette own = m_ownPalettes.contains(widget)
                             ? m_ownPalettes.value(widget)
                             : *m_ownPalettes.insert(widget, widget->palette());
    const QPalette::ColorRole role = colorRole(widget, background);
    QPalette palette = widget->palette();
    if (color == colors::kDefault) {
        for (auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
            palette.setBrush(group, role, own.brush(group, role));
    } else {
        palette.setColor(role, modelColor(color, own, role));
    }
    widget->setPalette(palette);
    if (role == QPalette::Window) widget->setAutoFillBackground(color != colors::kDefault);
}

// A widget that places itself by the twips of the logic reads them from this property.
void FormView::applyLeft(QObject* target, const Element& e) {
    target->setProperty("mq27LeftTwips", e.left);
}

void FormView::applyMousePointer(QObject* target, const Element& e) {
    if (auto* widget = qobject_cast<QWidget*>(target)) {
        if (e.mousePointer == MousePointer::HelpLink)
            widget->setCursor(Qt::PointingHandCursor);
        else
            widget->unsetCursor();
    }
}

void FormView::applyToolTip(QObject* target, const Element& e) {
    if (auto page = tabPageOf(target)) {
        page->tabs->setTabToolTip(page->index, e.toolTip);
    } else if (auto* action = qobject_cast<QAction*>(target)) {
        action->setToolTip(e.toolTip);
    } else if (auto* widget = qobject_cast<QWidget*>(target)) {
        widget->setToolTip(e.toolTip);
    }
}

void FormView::applyItems(QObject* target, const Element& e) {
    if (auto* combo = qobject_cast<QComboBox*>(target)) {
        combo->clear();
        combo->addItems(e.items);
        combo->setCurrentIndex(toInt(e.value, -1));
    } else if (auto* list = qobject_cast<QListWidget*>(target)) {
        // Row by row, so that a list whose values change every telegram keeps its scroll
        // position, its selection and its tick marks, and does not flicker.
        while (list->count() > e.items.size())
            delete list->takeItem(list->count() - 1);
        for (qsizetype row = 0; row < e.items.size(); ++row) {
            QListWidgetItem* item = list->item(static_cast<int>(row));
            if (!item) {
                item = new QListWidgetItem(e.items[row], list);
                if (hasTickMarks(list)) {
                    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
                    item->setCheckState(tickOf(e, row));
                }
            } else if (item->text() != e.items[row]) {
                item->setText(e.items[row]);
            }
        }
        if (list->currentRow() != toInt(e.value, -1))
            list->setCurrentRow(toInt(e.value, -1), QItemSelectionModel::ClearAndSelect);
    }
}

void FormView::applyTicks(QObject* target, const Element& e) {
    auto* list = qobject_cast<QListWidget*>(target);
    if (!list || !hasTickMarks(list)) return;
    for (int row = 0; row < list->count(); ++row)
        if (list->item(row)->checkState() != tickOf(e, row))
            list->item(row)->setCheckState(tickOf(e, row));
}

void FormView::applyWindow(Form::WindowChange change) {
    switch (change) {
    case Form::WindowChange::Title:
        m_window->setWindowTitle(m_form.title());
        break;
    case Form::WindowChange::Shown:
        showWindow();
        break;
    case Form::WindowChange::Hidden:
    case Form::WindowChange::Unloaded:
        m_window->hide();
        break;
    case Form::WindowChange::Raised:
        bringToFront();
        break;
    case Form::WindowChange::Centred:
        centreOver(m_form.centredOver());
        break;
    }
}

void FormView::showWindow() {
    // Modal windows block the others without a loop of their own: the event loop stays the
    // program's one loop.
    const Qt::WindowModality modality = m_form.isModal() ? Qt::ApplicationModal : Qt::NonModal;
    if (m_window->windowModality() != modality) {
        m_window->hide();
        m_window->setWindowModality(modality);
    }
    fitToScreen(m_window);
    m_window->show();
    // The frame the window manager adds is known only now.
    fitToScreen(m_window);
    bringToFront();
}

void FormView::bringToFront() {
    if (m_window->isMinimized())
        m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_window->raise();
    m_window->activateWindow();
}

void FormView::centreOver(const QString& formName) {
    QWidget* other = nullptr;
    for (QWidget* candidate : QApplication::topLevelWidgets()) {
        if (candidate == m_window || candidate->objectName() != formName) continue;
        if (!other || candidate->isVisible()) other = candidate;
    }
    // Size the window as showing it would, so that its centre is known.
    m_window->ensurePolished();
    if (QLayout* layout = m_window->layout()) layout->activate();
    if (!m_window->testAttribute(Qt::WA_Resized)) m_window->adjustSize();
    QScreen* screen = other ? other->screen() : m_window->screen();
    if (!screen) return;
    const QRect available = screen->availableGeometry();
    const QRect over = other && other->windowHandle() ? other->frameGeometry() : available;
    const QSize size = m_window->frameGeometry().size();
    QPoint topLeft = over.center() - QPoint(size.width() / 2, size.height() / 2);
    topLeft.setX(std::clamp(topLeft.x(), available.left(),
                            std::max(available.left(), available.right() - size.width())));
    topLeft.setY(std::clamp(topLeft.y(), available.top(),
                            std::max(available.top(), available.bottom() - size.height())));
    m_window->move(topLeft);
}

bool FormView::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_window) {
        if (event->type() == QEvent::MouseButtonRelease && m_mouseTargets.contains(watched))
            reportMouse(m_mouseTargets.value(watched), static_cast<QMouseEvent*>(event)->button());
        return false;
    }
    if (event->type() == QEvent::Close) {
        if (m_form.requestClose()) return false;
        event->ignore();
        return true;
    }
    if (event->type() == QEvent::KeyPress &&
        (qobject_cast<QDialog*>(m_window) || !m_escapeElement.isEmpty())) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Escape && key->modifiers() == Qt::NoModifier)
            return pressEscape();
    }
    return false;
}

bool FormView::pressEscape() {
    auto* button = qobject_cast<QAbstractButton*>(target(m_escapeElement));
    if (button && button->isEnabled() && button->isVisible()) button->click();
    return true;
}

#include "moc_formview.cpp"
