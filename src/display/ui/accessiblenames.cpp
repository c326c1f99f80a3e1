#include "display/ui/accessiblenames.h"

#include "common/colors.h"
#include "common/ui/accessibility.h"

#include <QWidget>

namespace {

constexpr int kOn = accessibility::kOnText;
constexpr int kOff = accessibility::kOffText;
constexpr int kClosed = 513;
constexpr int kOpen = 514;
constexpr int kPending = 62;
constexpr int kLatched = 63;
constexpr int kBlinking = 504;
constexpr int kFlashing = 505;

} // namespace

AccessibleNames::AccessibleNames(Form& form, std::function<QString(int)> text)
    : QObject()
    , m_form(form)
    , m_text(std::move(text)) {
    connect(&m_form, &Form::elementChanged, this, &AccessibleNames::onElementChanged);
}

void AccessibleNames::add(QWidget* widget, const QString& element, const QString& legend,
                          const QString& suffix, Says says, const QString& columnLegend) {
    m_entries.push_back(Entry{widget, element, legend, suffix, says, columnLegend, false, -1});
    const std::size_t index = m_entries.size() - 1;
    m_byLegend.insert(legend, index);
    if (!columnLegend.isEmpty()) m_byLegend.insert(columnLegend, index);
    if (says != Says::Nothing) m_byElement.insert(element, index);
    rename(m_entries.back());
    describe(m_entries.back());
}

void AccessibleNames::addContext(QWidget* widget, const QString& context, const QString& suffix) {
    m_entries.push_back(
        Entry{widget, QString(), context, suffix, Says::Nothing, QString(), true, -1});
    m_byLegend.insert(context, m_entries.size() - 1);
    rename(m_entries.back());
}

void AccessibleNames::addCaptioned(QWidget* widget, int text, const QString& context,
                                   const QString& suffix, const QString& detail) {
    m_entries.push_back(
        Entry{widget, QString(), context, suffix, Says::Nothing, detail, true, text});
    m_byLegend.insert(context, m_entries.size() - 1);
    if (!detail.isEmpty()) m_byLegend.insert(detail, m_entries.size() - 1);
    rename(m_entries.back());
}

void AccessibleNames::onElementChanged(const QString& element, ElementProperty property) {
    if (property == ElementProperty::Caption) {
        for (auto it = m_byLegend.constFind(element);
             it != m_byLegend.cend() && it.key() == element; ++it) {
            rename(m_entries[*it]);
            describe(m_entries[*it]);
        }
    }
    for (auto it = m_byElement.constFind(element); it != m_byElement.cend() && it.key() == element;
         ++it)
        describe(m_entries[*it]);
}

void AccessibleNames::rename(const Entry& entry) {
    if (!entry.widget) return;
    QString name = m_form.caption(entry.legend);
    if (!entry.suffix.isEmpty()) name += u' ' + entry.suffix;
    if (!entry.columnLegend.isEmpty() && !m_form.caption(entry.columnLegend).isEmpty())
        name += QStringLiteral(", ") + m_form.caption(entry.columnLegend);
    if (entry.contextOnly) {
        if (entry.widget->accessibleDescription() != name)
            entry.widget->setAccessibleDescription(name);
        if (entry.text >= 0 && entry.widget->accessibleName() != m_text(entry.text))
            entry.widget->setAccessibleName(m_text(entry.text));
        return;
    }
    if (entry.widget->accessibleName() != name) entry.widget->setAccessibleName(name);
}

void AccessibleNames::describe(const Entry& entry) {
    if (!entry.widget || entry.says == Says::Nothing) return;
    const Element& e = m_form.element(entry.element);
    QString description;
    switch (entry.says) {
    case Says::Value:
        description = e.caption;
        break;
    case Says::LedState:
        description = ledState(e);
        break;
    case Says::LampState:
        description = lampState(e);
        break;
    case Says::FaultState:
        description = faultState(e);
        break;
    case Says::RelayState:
        description = m_text(e.value != 0 ? kClosed : kOpen);
        break;
    case Says::Nothing:
        break;
    }
    if (entry.widget->accessibleDescription() != description) {
        entry.widget->setAccessibleDescription(description);
        accessibility::indicatorStateChanged(entry.widget);
    }
}

// The state the device reports, not the phase of the rhythm that paints it.
QString AccessibleNames::ledState(const Element& e) const {
    if (e.value == 1) return m_text(kFlashing);
    if (e.value == 2) return m_text(kBlinking);
    if (e.value == 3) return m_text(kOn);
    return m_text(kOff);
}

QString AccessibleNames::lampState(const Element& e) const {
    const bool dark = e.backColor == colors::kDefault || e.backColor == colors::kWindowBackground;
    return m_text(dark ? kOff : kOn);
}

QString AccessibleNames::faultState(const Element& e) const {
    if (e.backColor == colors::kYellow) return m_text(kPending);
    if (e.dotColor != colors::kDefault) return m_text(kLatched);
    return m_text(kOff);
}

#include "moc_accessiblenames.cpp"
