#pragma once

#include "common/formmodel.h"

#include <functional>

#include <QHash>
#include <QObject>
#include <QPointer>

class QWidget;

// What screen readers and desktop automation hear of the main view's widgets: each value,
// input, LED and fault box is named after its legend in the current language (with the
// detector, relay, sensor or module number where there are several), and describes what it
// shows: a value label its value with its unit, an LED its state in words (on, blinking,
// flashing, off), a fault box pending or latched. Names follow the legends' captions, so a
// language switch renames everything at once.
class AccessibleNames : public QObject {
    Q_OBJECT

public:
    // `text` gives string n of the table in the current language.
    AccessibleNames(Form& form, std::function<QString(int)> text);

    // What the accessible description tells: the element's caption, the state an LED is painted
    // from, a lamp lit by its colour, a fault box's state, a relay contact closed or open.
    Form& form() const { return m_form; }

    enum class Says { Nothing, Value, LedState, LampState, FaultState, RelayState };

    // `widget` shows `element` and is named by the caption of `legend`, then `suffix`, then
    // the caption of `columnLegend` where a grid has one ("Fire alarm 1, Relay 3").
    void add(QWidget* widget, const QString& element, const QString& legend,
             const QString& suffix = {}, Says says = Says::Nothing,
             const QString& columnLegend = {});

    // `widget` keeps the name its own caption gives it; the caption of `context`, then
    // `suffix`, tells in its description what it acts on ("Übernehmen", "Einstellungen"),
    // so that a screen reader and voice control find a button by what it shows.
    void addContext(QWidget* widget, const QString& context, const QString& suffix = {});

    // String numbers of the arrows beside a field.
    static constexpr int kStepUp = 509;
    static constexpr int kStepDown = 510;

    // `widget` shows no caption: it is named by string `text`, and its description is the
    // caption of `context`, then `suffix`, then the caption of `detail` where it has one.
    void addCaptioned(QWidget* widget, int text, const QString& context, const QString& suffix,
                      const QString& detail);

private:
    struct Entry {
        QPointer<QWidget> widget;
        QString element;
        QString legend;
        QString suffix;
        Says says;
        QString columnLegend;
        bool contextOnly = false;
        int text = -1;
    };

    void onElementChanged(const QString& element, ElementProperty property);
    void rename(const Entry& entry);
    void describe(const Entry& entry);
    QString ledState(const Element& e) const;
    QString lampState(const Element& e) const;
    QString faultState(const Element& e) const;

    Form& m_form;
    std::function<QString(int)> m_text;
    std::vector<Entry> m_entries;
    QMultiHash<QString, std::size_t> m_byLegend;
    QMultiHash<QString, std::size_t> m_byElement;
};
