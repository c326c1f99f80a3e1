#pragma once

#include "common/formmodel.h"
#include "common/formtimer.h"

#include <cstdint>

#include <QObject>
#include <QString>

class DeviceValues;
class Preferences;
class Texts;

// The window frmExtinguishDetails: one bus module in detail, its online state, the faults it
// can have (pending as a yellow box, stored as a dot in the box) and its numbers. It follows
// the value store every 234 ms while it is open; the choice of module follows the bus.
class ExtinguishDetails : public QObject {
    Q_OBJECT

public:
    // `window` is its own; `mainView` opens it.
    ExtinguishDetails(Form& window, Form& mainView, const Texts& texts,
                      const Preferences& preferences, DeviceValues& values);

    // Opens the window modally on module `Index` (0 to 9) and starts its refresh.
    void ShowExtDetails(int Index);
    void GetExtDatails();
    // The window's words in the current language.
    void ApplyTexts();

    int ExtModuleIndex() const { return m_extModuleIndex; }
    FormTimer& tmrRefresh() { return m_tmrRefresh; }

    // The dot of a stored fault: yellow in an empty box as the main view's fault list has it,
    // dark in a box that is yellow because the fault is pending as well.
    static std::uint32_t StoredMark(bool pending);

Q_SIGNALS:
    // The help of a fault row: mouse `Button`, its topic and its caption.
    void HelpRequested(int Button, int Topic, const QString& Text);

private:
    Form& Window() const;
    void Form_Load();
    void OnClicked(const QString& element);
    void OnEdited(const QString& element);
    void OnMouseClicked(const QString& element, int button);
    void OnWindowChanged(Form::WindowChange change);
    void OnDisplayClicked(const QString& element);

    Form& m_window;
    Form& m_mainView;
    const Texts& m_texts;
    const Preferences& m_preferences;
    DeviceValues& m_values;
    FormTimer m_tmrRefresh{234};
    int m_extModuleIndex = 0;
};
