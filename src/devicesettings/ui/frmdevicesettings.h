#pragma once

#include <functional>
#include <memory>

#include <QDialog>

class AccessibleNames;
class Form;
class FormView;

// The rack device's advanced settings: the manual release resistors beside the beta values
// of the temperature sensors, each page with its values, the fields that take their place
// while it is edited, its buttons and what it says while it waits for the device.
class frmDeviceSettingsWindow : public QDialog {
    Q_OBJECT

public:
    // `text` gives string n of the table in the current language.
    frmDeviceSettingsWindow(Form& form, std::function<QString(int)> text,
                            QWidget* parent = nullptr);
    ~frmDeviceSettingsWindow() override;

    FormView& view() { return *m_view; }

private:
    std::unique_ptr<AccessibleNames> m_names;
    std::unique_ptr<FormView> m_view;
};
