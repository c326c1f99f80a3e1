#pragma once

#include "common/colors.h"
#include "common/elementdecl.h"

#include <functional>

#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>

// The pointer over an element: a help link says that a click opens help.
enum class MousePointer { Default, HelpLink };

// What one named element of a window holds. Which fields matter depends on its kind: a
// label shows its caption, a tick box its value, a gauge its value within its range.
struct Element {
    QString caption;  // caption, text of a text field, title of a frame or tab page
    double value = 0; // tick box and option 0/1, list or tab index, up/down or gauge value
    double minimum = 0;
    double maximum = 0;
    double centre = 0;
    double step = 1;
    bool visible = true;
    bool enabled = true;
    std::uint32_t backColor = colors::kDefault;
    std::uint32_t foreColor = colors::kDefault;
    QString toolTip;
    QStringList items; // entries of a list or combo box; a gauge's lower, centre, upper labels
    QList<bool> ticks; // tick marks of a list's entries, by row; rows beyond are not ticked
    int top = 0;       // vertical position, in twips, where the logic places an element
    int left = 0;      // horizontal position, in twips, from the left edge of what it follows
    std::uint32_t dotColor = colors::kDefault; // fill of a dot drawn into a box; none by default
    MousePointer mousePointer = MousePointer::Default;
};

enum class ElementProperty {
    Caption,
    Value,
    Range,
    Visible,
    Enabled,
    BackColor,
    ForeColor,
    ToolTip,
    Items,
    Ticks,
    Top,
    Left,
    Dot,
    MousePointer
};

// The state of one window, by element name. The logic reads and writes it; a view
// renders it and reports the user's input back. Windows read each other's elements through
// it, so a value shown in one place is the value another place compares or prints.
//
// Element names are the objectNames of the widgets: a control array member carries its
// index behind an underscore, "lblSerialNo_0". A window holds exactly the elements its
// declaration lists; any other name is refused (reportUndeclaredElement).
class Form : public QObject {
    Q_OBJECT

public:
    enum class WindowChange { Title, Shown, Hidden, Raised, Centred, Unloaded };

    Form(const QString& name, FormDeclaration declaration, QObject* parent = nullptr);

    const QString& name() const { return m_name; }
    static QString indexed(QStringView base, int index);

    bool has(const QString& element) const { return m_elements.contains(element); }
    ElementKind kind(const QString& element) const { return m_kinds.value(element); }
    const Element& element(const QString& element) const;

    QString caption(const QString& element) const { return this->element(element).caption; }
    double value(const QString& element) const { return this->element(element).value; }
    bool isChecked(const QString& element) const { return value(element) != 0; }
    bool isVisible(const QString& element) const { return this->element(element).visible; }
    bool isEnabled(const QString& element) const { return this->element(element).enabled; }
    std::uint32_t backColor(const QString& e) const { return element(e).backColor; }
    std::uint32_t foreColor(const QString& e) const { return element(e).foreColor; }
    QString toolTip(const QString& element) const { return this->element(element).toolTip; }
    QStringList items(const QString& element) const { return this->element(element).items; }
    bool isTicked(const QString& element, qsizetype row) const;
    int top(const QString& element) const { return this->element(element).top; }
    int left(const QString& element) const { return this->element(element).left; }
    std::uint32_t dotColor(const QString& e) const { return element(e).dotColor; }
    MousePointer mousePointer(const QString& e) const { return element(e).mousePointer; }

    void setCaption(const QString& element, const QString& caption);
    void setValue(const QString& element, double value);
    void setChecked(const QString& element, bool checked) { setValue(element, checked ? 1 : 0); }
    void setRange(const QString& element, double minimum, double maximum, double step = 1);
    void setGaugeRange(const QString& element, double minimum, double centre, double maximum);
    void setVisible(const QString& element, bool visible);
    void setEnabled(const QString& element, bool enabled);
    void setBackColor(const QString& element, std::uint32_t color);
    void setForeColor(const QString& element, std::uint32_t color);
    void setToolTip(const QString& element, const QString& toolTip);
    void setItems(const QString& element, const QStringList& items);
    void addItem(const QString& element, const QString& item);
    // A list entry's tick mark; it belongs to the row, whatever text the row shows.
    void setTicked(const QString& element, qsizetype row, bool ticked);
    void setTop(const QString& element, int top);
    void setLeft(const QString& element, int left);
    // A filled dot of `color` in the middle of a box; colors::kDefault takes it away.
    void setDot(const QString& element, std::uint32_t color);
    void setMousePointer(const QString& element, MousePointer pointer);

    // The window itself.
    QString title() const { return m_title; }
    void setTitle(const QString& title);
    bool isLoaded() const { return m_loaded; }
    bool isShown() const { return m_shown; }
    bool isModal() const { return m_modal; }
    QString centredOver() const { return m_centredOver; }
    void load();
    void show(bool modal = false);
    void hide();
    void unload();
    void bringToFront();
    void centreOver(const Form& other);

    // Input from the view.
    void userSetCaption(const QString& element, const QString& caption);
    void userSetValue(const QString& element, double value);
    void userSetTicked(const QString& element, qsizetype row, bool ticked);
    void click(const QString& element);
    void doubleClick(const QString& element);
    // A mouse button released over an element: 1 left, 2 right, 4 middle.
    void mouseClick(const QString& element, int button);
    // The window's close button; true when the window may close.
    bool requestClose();
    void setCloseHandler(std::function<bool()> handler) { m_closeHandler = std::move(handler); }

    // Every declared element, sorted.
    QStringList elementNames() const;

Q_SIGNALS:
    void elementChanged(const QString& element, ElementProperty property);
    void windowChanged(Form::WindowChange change);
    void loaded();
    void clicked(const QString& element);
    void doubleClicked(const QString& element);
    void mouseClicked(const QString& element, int button);
    void edited(const QString& element);

private:
    Element& writable(const QString& element);
    template <typename T>
    void assign(const QString& element, T Element::*field, const T& value, ElementProperty what);

    QString m_name;
    QString m_title;
    QHash<QString, Element> m_elements;
    QHash<QString, ElementKind> m_kinds;
    bool m_loaded = false;
    bool m_shown = false;
    bool m_modal = false;
    QString m_centredOver;
    std::function<bool()> m_closeHandler;
};
