#pragma once

#include "common/formmodel.h"

#include <cstdint>

#include <QColor>
#include <QHash>
#include <QMultiHash>
#include <QObject>
#include <QPalette>
#include <QPointer>

class QListWidget;
class QTabWidget;
class QWidget;

// The colour a model number stands for, on a widget whose own palette is `own`: plain RGB
// with red in the low byte, a system colour by its role, and `colors::kDefault` as the
// widget's own colour of `ownRole`.
QColor modelColor(std::uint32_t color, const QPalette& own, QPalette::ColorRole ownRole);

// Renders a window model on a widget tree and reports the user's input back to it.
// Elements are found by objectName among the window's widgets, actions and menus; a model
// element without one is plain state. The view never feeds a change it applied back to the
// model.
class FormView : public QObject {
    Q_OBJECT

public:
    // Applies the model's present state at once; the window's widgets must exist.
    FormView(Form& form, QWidget* window);

    Form& form() const { return m_form; }
    QWidget* window() const { return m_window; }
    // The widget, action or menu that shows `element`; null when none does.
    QObject* target(const QString& element) const { return m_targets.value(element).data(); }

    // Entries of `list` carry tick marks, which the model's ticks of its element set and the
    // user's clicks report back. Before the view is made.
    static void giveTickMarks(QListWidget* list);
    static bool hasTickMarks(const QListWidget* list);

    // `widget` shows `element` a second time, elsewhere in the window, without taking input:
    // a summary that reads the same state as the element's own widget. Before the view is
    // made.
    static void mirror(QObject* widget, const QString& element);

    // The button that the Escape key presses. Without one, Escape leaves a dialog open.
    void setEscapeElement(const QString& element) { m_escapeElement = element; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using Applier = void (FormView::*)(QObject*, const Element&);
    static Applier applierFor(ElementProperty property);

    void collectTargets();
    void connectInput(const QString& name, QObject* target);
    void applyAll();
    void applyElement(const QString& name, ElementProperty property);
    void applyWindow(Form::WindowChange change);

    void applyCaption(QObject* target, const Element& e);
    void applyValue(QObject* target, const Element& e);
    void applyRange(QObject* target, const Element& e);
    void applyVisible(QObject* target, const Element& e);
    void applyEnabled(QObject* target, const Element& e);
    void applyBackColor(QObject* target, const Element& e);
    void applyForeColor(QObject* target, const Element& e);
    void applyToolTip(QObject* target, const Element& e);
    void applyMousePointer(QObject* target, const Element& e);
    void applyLeft(QObject* target, const Element& e);
    void applyItems(QObject* target, const Element& e);
    void applyTicks(QObject* target, const Element& e);
    void applyNothing(QObject*, const Element&) {}
    void applyColor(QObject* target, std::uint32_t color, bool background);

    void assignMnemonics();
    void showWindow();
    void bringToFront();
    void centreOver(const QString& formName);
    bool pressEscape();

    // Reports from the widgets, dropped while the view itself is applying the model.
    void reportValue(const QString& name, double value);
    void reportCaption(const QString& name, const QString& caption);
    void reportMouse(const QString& name, Qt::MouseButton button);

    Form& m_form;
    QPointer<QWidget> m_window;
    QHash<QString, QPointer<QObject>> m_targets;
    QMultiHash<QString, QPointer<QObject>> m_mirrors;
    QHash<QObject*, QPalette> m_ownPalettes;
    QHash<QObject*, QString> m_mouseTargets;
    QString m_escapeElement;
    bool m_applying = false;
    bool m_mnemonicsQueued = false;
};

// A new widget, action or layout member named after its element.
template <typename T, typename... Args>
T* named(const QString& name, Args&&... args) {
    T* object = new T(std::forward<Args>(args)...);
    object->setObjectName(name);
    return object;
}
