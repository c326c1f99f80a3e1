#include "common/formmodel.h"

namespace {
const Element kDesignDefaults;
}

Form::Form(const QString& name, FormDeclaration declaration, QObject* parent)
    : QObject(parent)
    , m_name(name) {
    auto declare = [this](const QString& element, ElementKind kind) {
        m_elements.insert(element, Element{});
        m_kinds.insert(element, kind);
    };
    for (const ElementDecl& row : declaration) {
        const QStringView base(row.name);
        if (!row.isArray() || row.kind == ElementKind::Tab) declare(base.toString(), row.kind);
        for (int i = row.first; row.isArray() && i <= row.last; ++i)
            declare(indexedName(base, i), row.kind);
    }
}

QString Form::indexed(QStringView base, int index) {
    return indexedName(base, index);
}

QStringList Form::elementNames() const {
    QStringList names = m_elements.keys();
    names.sort();
    return names;
}

const Element& Form::element(const QString& element) const {
    const auto it = m_elements.constFind(element);
    if (it != m_elements.constEnd()) return *it;
    reportUndeclaredElement(m_name, element);
    return kDesignDefaults;
}

// A name the window does not declare is reported; where that lets the program go on, the
// element is made as before, so that nothing else changes.
Element& Form::writable(const QString& element) {
    const auto it = m_elements.find(element);
    if (it != m_elements.end()) return *it;
    reportUndeclaredElement(m_name, element);
    return m_elements[element];
}

template <typename T>
void Form::assign(const QString& element, T Element::*field, const T& value, ElementProperty what) {
    Element& e = writable(element);
    if (e.*field == value) return;
    e.*field = value;
    Q_EMIT elementChanged(element, what);
}

void Form::setCaption(const QString& element, const QString& caption) {
    assign(element, &Element::caption, caption, ElementProperty::Caption);
}

void Form::setValue(const QString& element, double value) {
    assign(element, &Element::value, value, ElementProperty::Value);
}

void Form::setRange(const QString& element, double minimum, double maximum, double step) {
    Element& e = writable(element);
    if (e.minimum == minimum && e.maximum == maximum && e.step == step) return;
    e.minimum = minimum;
    e.maximum = maximum;
    e.step = step;
    Q_EMIT elementChanged(element, ElementProperty::Range);
}

void Form::setGaugeRange(const QString& element, double minimum, double centre, double maximum) {
    Element& e = writable(element);
    if (e.minimum == minimum && e.maximum == maximum && e.centre == centre) return;
    e.minimum = minimum;
    e.centre = centre;
    e.maximum = maximum;
    Q_EMIT elementChanged(element, ElementProperty::Range);
}

void Form::setVisible(const QString& element, bool visible) {
    assign(element, &Element::visible, visible, ElementProperty::Visible);
}

void Form::setEnabled(const QString& element, bool enabled) {
    assign(element, &Element::enabled, enabled, ElementProperty::Enabled);
}

void Form::setBackColor(const QString& element, std::uint32_t color) {
    assign(element, &Element::backColor, color, ElementProperty::BackColor);
}

void Form::setForeColor(const QString& element, std::uint32_t color) {
    assign(element, &Element::foreColor, color, ElementProperty::ForeColor);
}

void Form::setToolTip(const QString& element, const QString& toolTip) {
    assign(element, &Element::toolTip, toolTip, ElementProperty::ToolTip);
}

void Form::setItems(const QString& element, const QStringList& items) {
    assign(element, &Element::items, items, ElementProperty::Items);
}

void Form::addItem(const QString& element, const QString& item) {
    writable(element).items.append(item);
    Q_EMIT elementChanged(element, ElementProperty::Items);
}

bool Form::isTicked(const QString& element, qsizetype row) const {
    const QList<bool>& ticks = this->element(element).ticks;
    return row >= 0 && row < ticks.size() && ticks[row];
}

namespace {
// False when the tick already stood so.
bool putTick(Element& e, qsizetype row, bool ticked) {
    if (row < 0 || (row < e.ticks.size() ? e.ticks[row] == ticked : !ticked)) return false;
    if (row >= e.ticks.size()) e.ticks.resize(row + 1, false);
    e.ticks[row] = ticked;
    return true;
}
} // namespace

void Form::setTicked(const QString& element, qsizetype row, bool ticked) {
    if (putTick(writable(element), row, ticked))
        Q_EMIT elementChanged(element, ElementProperty::Ticks);
}

void Form::setTop(const QString& element, int top) {
    assign(element, &Element::top, top, ElementProperty::Top);
}

void Form::setLeft(const QString& element, int left) {
    assign(element, &Element::left, left, ElementProperty::Left);
}

void Form::setDot(const QString& element, std::uint32_t color) {
    assign(element, &Element::dotColor, color, ElementProperty::Dot);
}

void Form::setMousePointer(const QString& element, MousePointer pointer) {
    assign(element, &Element::mousePointer, pointer, ElementProperty::MousePointer);
}

void Form::setTitle(const QString& title) {
    if (m_title == title) return;
    m_title = title;
    Q_EMIT windowChanged(WindowChange::Title);
}

void Form::load() {
    if (m_loaded) return;
    m_loaded = true;
    Q_EMIT loaded();
}

void Form::show(bool modal) {
    load();
    m_modal = modal;
    m_shown = true;
    Q_EMIT windowChanged(WindowChange::Shown);
}

void Form::hide() {
    if (!m_shown) return;
    m_shown = false;
    Q_EMIT windowChanged(WindowChange::Hidden);
}

void Form::unload() {
    hide();
    if (!m_loaded) return;
    m_loaded = false;
    m_modal = false;
    Q_EMIT windowChanged(WindowChange::Unloaded);
}

void Form::bringToFront() {
    if (m_shown) Q_EMIT windowChanged(WindowChange::Raised);
}

void Form::centreOver(const Form& other) {
    m_centredOver = other.name();
    Q_EMIT windowChanged(WindowChange::Centred);
}

void Form::userSetCaption(const QString& element, const QString& caption) {
    Element& e = writable(element);
    if (e.caption == caption) return;
    e.caption = caption;
    Q_EMIT edited(element);
}

void Form::userSetValue(const QString& element, double value) {
    Element& e = writable(element);
    if (e.value == value) return;
    e.value = value;
    Q_EMIT edited(element);
}

void Form::userSetTicked(const QString& element, qsizetype row, bool ticked) {
    if (putTick(writable(element), row, ticked)) Q_EMIT edited(element);
}

void Form::click(const QString& element) {
    Q_EMIT clicked(element);
}

void Form::doubleClick(const QString& element) {
    Q_EMIT doubleClicked(element);
}

void Form::mouseClick(const QString& element, int button) {
    Q_EMIT mouseClicked(element, button);
}

bool Form::requestClose() {
    if (m_closeHandler && !m_closeHandler()) return false;
    unload();
    return true;
}

#include "moc_formmodel.cpp"
